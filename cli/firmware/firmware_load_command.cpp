// SPDX-License-Identifier: MIT
// `zeltag firmware load`: puts a firmware file into a reader that the rules let it into.
#include "cli/command/command.h"
#include "cli/command/question.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/firmware/firmware_file.h"
#include "cli/firmware/flash_failure.h"
#include "cli/firmware/flash_interruption.h"
#include "cli/firmware/flash_progress.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <cstdlib>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr char kRulesUnasked[] =
    "it tells no firmware of its own, so no rule can be asked whether the file is made for it";

// The library tells rules by their number, and a flash that failed by a text without one.
std::optional<Refusal> refusalIn(const std::string& result) {
    const bool isNumbered = !result.empty() && std::isdigit(static_cast<unsigned char>(result[0]));
    return isNumbered ? std::optional(Refusal{std::atoi(result.c_str()), result}) : std::nullopt;
}

std::string orFirmware(const std::string& name) { return name.empty() ? "the firmware" : name; }

class FirmwareLoadCommand : public Command {
public:
    CommandText text() const override {
        return {"firmware load", "Firmware", "Load a firmware file into a reader",
                "zeltag firmware load examples/firmware.hex --yes --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file; its checksum and the rules must hold")
            ->option_text(" ")
            ->required();
        app.add_flag("--recover", recover_,
                     "Load into a reader left in its boot loader, where no rule can be asked");
        app.add_flag("--yes,-y", yes_, "Ask nothing");
    }

    Outcome run(const Options& options, Output& output) override {
        if (auto failure = demandUsb(options, "`zeltag firmware load`"))
            return failure;
        if (!yes_ && !canAsk())
            return Failure{ExitCode::Usage, "a load replaces the firmware and nobody can be asked",
                           "add --yes to do it", ""};
        const auto read = readFirmwareFile(path_);
        if (const auto* const failure = std::get_if<Failure>(&read))
            return *failure;
        const Connection connection(options, Need::Choice);
        if (connection.failure())
            return connection.failure();
        const auto& file = std::get<FirmwareFile>(read);
        if (auto failure = whyNot(file))
            return failure;
        return flash(file, options, output);
    }

private:
    // The rules are left out on demand alone, and only where they have nothing to go by.
    bool skipsRules() const { return recover_ && !tellsItsFirmware(); }

    Outcome whyNot(const FirmwareFile& file) const {
        if (auto failure = whyNoFirmware())
            return failure;
        const std::string device = activeDevice().name;
        if (skipsRules())
            warn(fmt::format("warning: {}: {}", device, kRulesUnasked));
        else if (const auto refusal = refusalOf(file))
            return explain(*refusal, file);
        if (!yes_ && !isConfirmed(fmt::format("Load {} into {}? Don't unplug it meanwhile.",
                                              orFirmware(file.name), device)))
            return Failure{ExitCode::Interrupted, "nothing was sent", "", device};
        return {};
    }

    Outcome flash(const FirmwareFile& file, const Options& options, Output& output) const {
        const Device device = activeDevice();
        const bool shown = showsProgress() || !options.json;
        if (shown)
            warn(fmt::format("loading {} into {}; it takes some seconds before the first line",
                             orFirmware(file.name), device.name));
        if (auto failure = send(file, device, shown, options.json))
            return failure;
        tell(file, device, options, output);
        return {};
    }

    Outcome send(const FirmwareFile& file, const Device& device, bool shown, bool json) const {
        const FlashInterruption interruption(interruptedAtAnEnd(path_, device.name),
                                             interruptedFlash(path_, device.name), json);
        const FlashProgress progress(file.lines, shown);
        if (skipsRules())
            return Bootload(path_.c_str()) == 1 ? Outcome() : whyFailed(device);
        const std::string result = CheckRulesAndBootload(path_.c_str());
        if (result == kSuccess)
            return {};
        const auto refusal = refusalIn(result);
        return refusal ? explain(*refusal, file) : whyFailed(device);
    }

    // A SIGTERM closes the devices and lets the flash fail on them.
    Failure whyFailed(const Device& device) const {
        return GetDevCnt() == 0 ? interruptedFlash(path_, device.name)
                                : explainFlash(GetLastLibErr(), path_, device.name);
    }

    void tell(const FirmwareFile& file, const Device& device, const Options& options,
              Output& output) const {
        if (options.json)
            output.object(Json{{"device", toJson(device)},
                               {"path", path_},
                               {"firmware", toJson(file)},
                               {"rules", skipsRules() ? "unasked" : "passed"},
                               {"loaded", true}});
        else
            output.line(fmt::format("{}  {} is in {}: it took all of {} line{}", path_,
                                    orFirmware(file.name), device.name, file.lines,
                                    file.lines == 1 ? "" : "s"));
    }

    static constexpr char kSuccess[] = "Your operation is successfully executed.";

    std::string path_;
    bool recover_ = false;
    bool yes_ = false;
};

} // namespace

std::unique_ptr<Command> command::firmware_load() {
    return std::make_unique<FirmwareLoadCommand>();
}

} // namespace zel::cli
