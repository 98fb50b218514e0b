// SPDX-License-Identifier: MIT
// `zeltag config export`: writes a reader's settings to a template file.
#include "cli/command/command.h"
#include "cli/command/file_progress.h"
#include "cli/command/interrupt.h"
#include "cli/command/replacement_file.h"
#include "cli/config/stripe_file.h"
#include "cli/config/template_file.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/file/input_file.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr std::size_t kRoom = 8192;        // for a configuration and its part of the rest
constexpr std::size_t kStripeRoom = 32768; // for all of a magnetic stripe reader

class ConfigExportCommand : public Command {
public:
    CommandText text() const override {
        return {"config export", "Configure", "Write all settings to a file",
                "zeltag config export settings.txt --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file; one that exists is replaced when all went well")
            ->option_text(" ")
            ->required();
        app.add_flag("--sealed", sealed_, "Add a checksum that import --sealed checks");
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options, Need::Settings);
        if (connection.failure())
            return connection.failure();
        if (sealed_ && isStripe())
            return noSealedStripeFile();
        catchInterrupts();
        ReplacementFile file(path_);
        if (file.failure())
            return file.failure();
        const bool written = writeTo(file.temporary());
        if (interrupted())
            return interruption();
        if (!written)
            return whyFailed(file);
        if (auto failure = file.keep())
            return failure;
        tell(options, output);
        return {};
    }

private:
    // The library reads each configuration anew. Its result tells neither a full disk nor what got
    // lost on the way; what the connect read does.
    bool writeTo(const std::string& path) const {
        const Configurations held = activeConfigurations();
        const FileProgress progress(path, {"##NEXTCONFIG##", "configurations", configurations()});
        const int result =
            sealed_ ? WriteDevCfgToSecureFile(path.c_str()) : WriteDevCfgToFile(path.c_str());
        return result == 1 && tellsAll(path, held) &&
               (!sealed_ || trailerOf(path, FileKind::Template).holds);
    }

    static std::size_t room() {
        return isStripe() ? kStripeRoom : static_cast<std::size_t>(configurations()) * kRoom;
    }

    static int configurations() { return GetMaxConfig() + 1; }

    Failure whyFailed(const ReplacementFile& file) const {
        if (auto failure = file.tryToFill(room()))
            return *failure;
        const Device device = activeDevice();
        return {ExitCode::Failed,
                fmt::format("{} can't be read: {} was not written", device.name, path_),
                "check its cable, then try `zeltag ping`", device.name};
    }

    void tell(const Options& options, Output& output) const {
        const Device device = activeDevice();
        const bool keys = showsKeys();
        if (keys)
            warn(fmt::format("warning: {} shows key values: the field data of {} count more bytes "
                             "than they have; don't share it",
                             path_, device.name));
        if (options.json)
            output.object(Json{{"device", toJson(device)},
                               {"path", path_},
                               {"configurations", configurations()},
                               {"sealed", sealed_},
                               {"shows_keys", keys}});
        else
            output.line(fmt::format("{}  {} configuration{} of {}{}", path_, configurations(),
                                    configurations() == 1 ? "" : "s", device.name,
                                    sealed_ ? ", sealed" : ""));
    }

    std::string path_;
    bool sealed_ = false;
};

} // namespace

std::unique_ptr<Command> command::config_export() {
    return std::make_unique<ConfigExportCommand>();
}

} // namespace zel::cli
