// SPDX-License-Identifier: MIT
// `zeltag file check`: which kind of file it is, and whether its trailer holds.
#include "cli/command/command.h"
#include "cli/file/input_file.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <map>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

const std::map<std::string, FileKind> kKinds = {{"template", FileKind::Template},
                                                {"firmware", FileKind::Firmware},
                                                {"keys", FileKind::Keys},
                                                {"zelBand", FileKind::Band},
                                                {"zelEcho", FileKind::Echo}};

class FileCheckCommand : public Command {
public:
    CommandText text() const override {
        return {"file check", "Files", "Check a template, firmware or key file",
                "zeltag file check settings.txt"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file")->option_text(" ")->required();
        app.add_option("--kind", kind_,
                       "Take it for a template, firmware, keys, zelBand or zelEcho file; its "
                       "content tells when left out")
            ->option_text("KIND")
            ->type_name("KIND")
            ->check(CLI::IsMember({"template", "firmware", "keys", "zelBand", "zelEcho"}));
        app.add_flag("--sealed", sealed_, "Refuse a template file without a checksum");
    }

    Outcome run(const Options& options, Output& output) override {
        if (auto failure = whyUnreadable(path_))
            return failure;
        const std::string text = textOf(path_);
        const auto kind = kind_.empty() ? kindOf(text) : kKinds.at(kind_);
        if (!kind)
            return Failure{ExitCode::DamagedFile, path_ + " is no template, firmware or key file",
                           "--kind tells what it is meant to be", ""};
        const Trailer trailer = trailerOf(path_, *kind);
        if (isPlain(*kind))
            return judgeLines(*kind, trailer, options, output);
        const bool open = *kind == FileKind::Template && !sealed_ && !hasTrailer(text);
        if (!trailer.holds && !open)
            return damaged(path_, trailer);
        tell(*kind, trailer, options, output);
        return {};
    }

private:
    // Settings without a checksum: a whole file and a part of one are both good.
    Outcome judgeLines(FileKind kind, const Trailer& lines, const Options& options,
                       Output& output) const {
        const std::string name = kindName(kind);
        if (sealed_)
            return Failure{ExitCode::DamagedFile, path_ + " has no checksum",
                           "a " + name + " file never has one", ""};
        if (!lines.holds && !lines.isPartial)
            return Failure{ExitCode::DamagedFile,
                           fmt::format("{} is no good {} file: {}", path_, name, lines.reason),
                           "correct it", ""};
        if (options.json)
            output.object(Json{{"path", path_},
                               {"kind", name},
                               {"sealed", false},
                               {"checksum", Json()},
                               {"whole", lines.holds}});
        else
            output.line(
                fmt::format("{}  {} file, {}", path_, name, lines.holds ? "whole" : lines.reason));
        return {};
    }

    void tell(FileKind kind, const Trailer& trailer, const Options& options, Output& output) const {
        if (options.json)
            output.object(Json{{"path", path_},
                               {"kind", kind == FileKind::Keys ? "keys" : kindName(kind)},
                               {"sealed", trailer.holds},
                               {"checksum", trailer.holds ? Json(trailer.computed) : Json()}});
        else if (trailer.holds)
            output.line(fmt::format("{}  {} file, checksum {} holds", path_, kindName(kind),
                                    trailer.computed));
        else
            output.line(fmt::format("{}  {} file, not sealed", path_, kindName(kind)));
    }

    std::string path_;
    std::string kind_;
    bool sealed_ = false;
};

} // namespace

std::unique_ptr<Command> command::file_check() { return std::make_unique<FileCheckCommand>(); }

} // namespace zel::cli
