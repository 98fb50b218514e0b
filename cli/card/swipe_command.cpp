// SPDX-License-Identifier: MIT
// `zeltag swipe`: the tracks of a card that passes a magnetic stripe reader, once or for as long as
// the user watches.
#include "cli/card/reading.h"
#include "cli/card/tracks.h"
#include "cli/command/command.h"
#include "cli/command/interrupt.h"
#include "cli/command/wait_option.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zel::cli {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kWait = 10;      // seconds
constexpr int kLooksPerTest = 10; // no data and no answer look alike

Failure noStripe() {
    constexpr char kReason[] = "it reads no magnetic stripe";
    return isTag() ? wrongProduct(kReason, "`zeltag read` reads its cards") : wrongProduct(kReason);
}

Failure nothingSwiped() {
    const Device device = activeDevice();
    return {ExitCode::NothingCame, "no card was swiped on " + device.name,
            "swipe one and try again, or wait longer with --wait 60", device.name};
}

class SwipeCommand : public Command {
public:
    CommandText text() const override {
        return {"swipe", "Read", "Read a card swiped on a magnetic stripe reader",
                "zeltag swipe --port /dev/ttyUSB0"};
    }

    void addOptions(CLI::App& app) override {
        auto* const watch =
            app.add_flag("--watch", watch_, "Print each card that is swiped, until Ctrl-C");
        addWaitOption(app, wait_, "Wait up to SECONDS for a card; 10 when left out")
            ->excludes(watch);
        auto* const mask =
            app.add_flag("--mask", mask_, "Hide the card's number; a terminal's default");
        auto* const noMask =
            app.add_flag("--no-mask", noMask_, "Hide nothing on a terminal either")->excludes(mask);
        app.add_flag("--sentinels", sentinels_, "Print sentinels and the checksum (LRC) too");
        for (CLI::Option* const flag : {watch, mask, noMask})
            flag->option_text(" "); // keeps the exclusions out of the help
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        if (!isStripe())
            return noStripe();
        catchInterrupts();
        showProgress(watch_ ? "swipe cards on " + activeDevice().name + ", Ctrl-C ends"
                            : "swipe a card on " + activeDevice().name);
        return watch_ ? watchSwipes(options, output) : awaitSwipe(options, output);
    }

private:
    Outcome watchSwipes(const Options& options, Output& output) const {
        for (int look = 1; !interrupted() && output.isOpen(); ++look) {
            const auto bits = static_cast<unsigned>(zelBandIsDataAvailable());
            if (auto failure = bits != 0 ? take(bits, options, output) : whyLost(look))
                return failure;
            pauseFor(kLookEvery);
        }
        return interrupted() ? Outcome(interruption()) : Outcome();
    }

    Outcome awaitSwipe(const Options& options, Output& output) const {
        const auto end = Clock::now() + std::chrono::duration<double>(wait_);
        for (int look = 1; !interrupted(); ++look) {
            const auto bits = static_cast<unsigned>(zelBandIsDataAvailable());
            if (bits != 0)
                return take(bits, options, output);
            const bool isOver = Clock::now() >= end;
            if (auto failure = whyLost(isOver ? kLooksPerTest : look))
                return failure;
            if (isOver && !interrupted())
                return nothingSwiped();
            pauseFor(kLookEvery);
        }
        return interruption();
    }

    // Every so many looks without data, whether the reader still answers.
    static Outcome whyLost(int look) {
        if (look % kLooksPerTest != 0 || pingTime() || interrupted())
            return {};
        const Device device = activeDevice();
        return Failure{ExitCode::Failed, "no answer from " + device.name, kMayBeUnplugged,
                       device.name};
    }

    Outcome take(unsigned bits, const Options& options, Output& output) const {
        const auto tracks = fetchTracks(bits);
        if (!tracks)
            return interrupted() ? interruption()
                                 : deviceFailed("reading the tracks of", kMayBeUnplugged);
        options.json ? printJson(*tracks, output) : print(*tracks, output);
        return zelBandClearDataAvailable() == 1
                   ? Outcome()
                   : deviceFailed("clearing the tracks of", kMayBeUnplugged);
    }

    bool isMasked() const { return mask_ || (!noMask_ && isatty(STDOUT_FILENO) != 0); }

    std::string shown(const Track& track) const {
        const Track told = isMasked() ? masked(track) : track;
        return sentinels_ ? withSentinels(told) : told.text;
    }

    void print(const std::vector<Track>& tracks, Output& output) const {
        for (const Track& track : tracks)
            output.line(fmt::format("track {}  {}", track.number, shown(track)));
    }

    void printJson(const std::vector<Track>& tracks, Output& output) const {
        Json object = Json::object();
        if (watch_)
            object["event"] = "swipe";
        object["device"] = toJson(activeDevice());
        object["masked"] = isMasked();
        Json& texts = object["tracks"] = Json::object();
        for (const Track& track : tracks)
            texts[std::to_string(track.number)] = shown(track);
        output.object(object);
    }

    bool watch_ = false;
    bool mask_ = false;
    bool noMask_ = false;
    bool sentinels_ = false;
    double wait_ = kWait;
};

} // namespace

std::unique_ptr<Command> command::swipe() { return std::make_unique<SwipeCommand>(); }

} // namespace zel::cli
