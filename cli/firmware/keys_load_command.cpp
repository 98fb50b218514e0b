// SPDX-License-Identifier: MIT
// `zeltag keys load`: sends the key blobs of a file to a reader. Shows none of them.
#include "cli/command/command.h"
#include "cli/command/file_progress.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "cli/file/input_file.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr char kLoadAgain[] =
    "check its cable and that it takes keys, then load the file again: some blobs may be stored";

std::string count(int blobs) { return fmt::format("{} key blob{}", blobs, blobs == 1 ? "" : "s"); }

class KeysLoadCommand : public Command {
public:
    CommandText text() const override {
        return {"keys load", "Files", "Send the key blobs of a file to a reader",
                "zeltag keys load keys.ini --device 0"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file; its checksum must hold")
            ->option_text(" ")
            ->required();
    }

    Outcome run(const Options& options, Output& output) override {
        if (auto failure = demandUsb(options, "`zeltag keys load`"))
            return failure;
        if (auto failure = whyDamaged(path_, FileKind::Keys))
            return failure;
        const int blobs = partsIn(path_, "[Blob");
        if (blobs == 0)
            return Failure{ExitCode::DamagedFile, path_ + " holds no key blob",
                           "there is nothing to load", ""};
        const Connection connection(options, Need::Choice);
        if (connection.failure())
            return connection.failure();
        if (auto failure = load(blobs))
            return failure;
        tell(blobs, options, output);
        return {};
    }

private:
    // The library tells of the last blob, and doesn't go on behind a section it can't read.
    Outcome load(int blobs) const {
        if (!isTag())
            return wrongProduct("it takes no keys");
        showProgress(fmt::format("sending {} to {}", count(blobs), activeDevice().name));
        if (LoadIniFile(path_.c_str()) == 1)
            return {};
        return deviceFailed("loading " + path_ + " into", kLoadAgain);
    }

    void tell(int blobs, const Options& options, Output& output) const {
        const Device device = activeDevice();
        if (options.json)
            output.object(Json{{"device", toJson(device)}, {"path", path_}, {"blobs", blobs}});
        else
            output.line(fmt::format("{}  {} sent to {}", path_, count(blobs), device.name));
    }

    std::string path_;
};

} // namespace

std::unique_ptr<Command> command::keys_load() { return std::make_unique<KeysLoadCommand>(); }

} // namespace zel::cli
