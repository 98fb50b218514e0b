// SPDX-License-Identifier: MIT
// `zeltag trace`: runs another command and shows what it exchanges with the readers.
#include "cli/command/command.h"
#include "cli/main/program.h"
#include "cli/trace/tracer.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fmt/format.h>
#include <memory>
#include <utility>

namespace zel::cli {

namespace {

struct Closing {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closing>;

Failure cannotWrite(const std::string& path, int error) {
    return {ExitCode::CannotWrite,
            fmt::format("{} can't be written: {}", path, std::strerror(error)),
            "choose another file or folder", ""};
}

class TraceCommand : public Command {
public:
    CommandText text() const override {
        return {"trace", "Diagnose", "Run a command and show what goes over the wire",
                "zeltag trace -- read --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("COMMAND", words_, "The command and its options, behind --")
            ->option_text("...")
            ->required();
        app.add_flag("--secrets", showsSecrets_, "Show what cards and keys hold");
        app.add_option("--output", file_, "Write the trace to FILE; stderr when left out")
            ->option_text("FILE")
            ->type_name("FILE");
    }

    Outcome run(const Options& options, Output& output) override {
        if (words_.front() == "trace")
            return Failure{ExitCode::Usage, "a trace can't be traced",
                           "name the command that matters", ""};
        File file(file_.empty() ? nullptr : std::fopen(file_.c_str(), "we"));
        if (!file_.empty() && !file)
            return cannotWrite(file_, errno);
        const Outcome outcome = trace(options, output, file ? file.get() : stderr);
        const int error = file ? finish(std::move(file)) : 0;
        return outcome || error == 0 ? outcome : cannotWrite(file_, error);
    }

private:
    // 0, or the errno of a line or of the end that the disk didn't take.
    static int finish(File file) {
        const bool isWritten = std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
        const int error = isWritten ? 0 : errno;
        const bool isClosed = std::fclose(file.release()) == 0;
        return isWritten && !isClosed ? errno : error;
    }

    Outcome trace(const Options& options, Output& output, std::FILE* stream) const {
        Tracer tracer({options.json, showsSecrets_}, [stream](const std::string& line) {
            std::fprintf(stream, "%s\n", line.c_str());
        });
        Outcome outcome = runWords(words_, options, output);
        tracer.finish();
        if (tracer.hasMasked())
            warn("what cards and keys hold is masked in the trace; --secrets shows it");
        return outcome;
    }

    std::vector<std::string> words_;
    bool showsSecrets_ = false;
    std::string file_;
};

} // namespace

std::unique_ptr<Command> command::trace() { return std::make_unique<TraceCommand>(); }

} // namespace zel::cli
