// SPDX-License-Identifier: MIT
// `zeltag wait`: until a reader is there, or gone.
#include "cli/command/command.h"
#include "cli/command/interrupt.h"
#include "cli/command/wait_option.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/diagnosis.h"
#include "cli/device/listing.h"
#include "cli/device/place.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <vector>

namespace zel::cli {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kBetweenLooks = std::chrono::milliseconds(250);

std::string namesOf(const std::vector<Device>& devices) {
    std::string names;
    for (const Device& device : devices)
        names += (names.empty() ? "" : ", ") + device.name;
    return names;
}

class WaitCommand : public Command {
public:
    CommandText text() const override {
        return {"wait", "Look", "Wait until a reader is there, or gone", "zeltag wait --wait 60"};
    }

    void addOptions(CLI::App& app) override {
        addWaitOption(app, seconds_, "Wait up to SECONDS; 30 when left out");
        app.add_flag("--gone", gone_, "Wait until it is gone; until all are when none is chosen");
    }

    Outcome run(const Options& options, Output& output) override {
        catchInterrupts();
        end_ = Clock::now() +
               std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds_));
        return gone_ ? awaitGone(options, output) : awaitThere(options, output);
    }

private:
    // Without a reader a look is an enumeration and no exchange.
    static bool isThere(const Options& options, const Outcome& place) {
        if (place)
            return false;
        USBConnect(nullptr);
        const int count = GetDevCnt();
        USBDisconnect();
        return count > options.device.value_or(0);
    }

    Outcome awaitThere(const Options& options, Output& output) {
        Outcome place = choosePlace(options);
        showProgress(fmt::format("waiting for a reader, up to {:g} s", seconds_));
        while (!isThere(options, place)) {
            if (!pause())
                return interrupted() ? interruption() : noneCame(options, place);
            if (!options.sim)
                place = choosePlace(options);
        }
        const Connection connection(options);
        if (!connection.failure())
            printListing(options, output);
        return connection.failure();
    }

    // Whether there is time for another look.
    bool pause() const {
        if (interrupted() || Clock::now() >= end_)
            return false;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
        pauseFor(std::min(kBetweenLooks, left));
        return !interrupted();
    }

    Failure noneCame(const Options& options, const Outcome& place) const {
        const Failure why = place ? *place : explainNothing(options);
        const std::string reason =
            options.isUsb() && why.exit == ExitCode::NoDevice && why.device.empty()
                ? ""
                : ": " + why.message;
        return {ExitCode::NothingCame,
                fmt::format("no reader was there within {:g} s{}", seconds_, reason),
                "`zeltag doctor` looks for the reason", ""};
    }

    Outcome awaitGone(const Options& options, Output& output) {
        const Connection connection(options, Need::Each);
        if (connection.failure())
            return connection.failure()->exit == ExitCode::NoDevice ? tellGone({}, options, output)
                                                                    : connection.failure();
        const std::vector<Device> awaited = chosen(options);
        showProgress(
            fmt::format("waiting until {} is gone, up to {:g} s", namesOf(awaited), seconds_));
        while (std::any_of(awaited.begin(), awaited.end(), answers)) {
            if (!pause())
                return interrupted() ? interruption() : stillThere(awaited);
        }
        return tellGone(awaited, options, output);
    }

    static std::vector<Device> chosen(const Options& options) {
        if (options.device)
            return {activeDevice()};
        std::vector<Device> all;
        for (int index = 0; index < GetDevCnt(); ++index) {
            SetActDev(static_cast<short>(index));
            all.push_back(activeDevice());
        }
        return all;
    }

    static bool answers(const Device& device) {
        SetActDev(static_cast<short>(device.index));
        return pingTime().has_value();
    }

    Failure stillThere(const std::vector<Device>& awaited) const {
        return {ExitCode::NothingCame,
                fmt::format("{} wasn't gone within {:g} s", namesOf(awaited), seconds_),
                "unplug it, or wait longer with --wait", ""};
    }

    static Outcome tellGone(const std::vector<Device>& gone, const Options& options,
                            Output& output) {
        Json devices = Json::array();
        for (const Device& device : gone)
            devices.push_back(toJson(device));
        if (options.json)
            output.object(Json{{"gone", devices}});
        else if (gone.empty())
            output.line("no reader is there");
        else
            for (const Device& device : gone)
                output.line(nameAndPath(device) + " is gone");
        return {};
    }

    double seconds_ = 30;
    bool gone_ = false;
    Clock::time_point end_;
};

} // namespace

std::unique_ptr<Command> command::wait() { return std::make_unique<WaitCommand>(); }

} // namespace zel::cli
