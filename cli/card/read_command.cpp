// SPDX-License-Identifier: MIT
// `zeltag read`: the card in a reader's field, once or for as long as the user watches.
#include "cli/card/card_data.h"
#include "cli/card/queued_id.h"
#include "cli/card/reading.h"
#include "cli/card/watch.h"
#include "cli/command/command.h"
#include "cli/command/interrupt.h"
#include "cli/command/wait_option.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

using Clock = std::chrono::steady_clock;

Failure noCard(const Device& device) {
    return {ExitCode::NothingCame, "no card in the field of " + device.name,
            "hold a card to the reader and try again, or add --wait 10", device.name};
}

class ReadCommand : public Command {
public:
    CommandText text() const override {
        return {"read", "Read", "Read the card in the reader's field", "zeltag read --sim --watch"};
    }

    void addOptions(CLI::App& app) override {
        app.add_flag("--watch", watch_, "Print each card that comes and goes, until Ctrl-C");
        addWaitOption(app, wait_, "Wait up to SECONDS for a card");
        auto* const longRead = app.add_flag(
            "--long", long_, "Print all 32 bytes, those behind the identifier's bits too");
        auto* const queued =
            app.add_flag("--queued", queued_, "Print the identifier that the reader queued");
        auto* const cardData =
            app.add_flag("--card-data", cardData_, "Print the 40 bytes of data read from the card");
        queued->excludes(longRead);
        cardData->excludes(longRead)->excludes(queued);
        for (CLI::Option* const flag : {longRead, queued, cardData})
            flag->option_text(" "); // keeps the exclusions out of the help
    }

    Outcome run(const Options& options, Output& output) override {
        if (auto failure = contradiction(options))
            return failure;
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        if (isStripe())
            return wrongProduct("its cards are swiped", "use `zeltag swipe`");
        const Device device = activeDevice();
        if (queued_)
            return readQueuedId(device, options, output);
        if (cardData_)
            return readCardData(device, options, output);
        return readCards(device, options, output);
    }

private:
    Outcome contradiction(const Options& options) const {
        if (watch_ && wait_ > 0)
            return Failure{ExitCode::Usage, "--watch and --wait don't go together",
                           "--watch waits for every card", ""};
        if ((queued_ || cardData_) && (watch_ || wait_ > 0))
            return Failure{ExitCode::Usage,
                           fmt::format("{} doesn't go with {}",
                                       queued_ ? "--queued" : "--card-data",
                                       watch_ ? "--watch" : "--wait"),
                           "it prints what the reader holds at this moment", ""};
        return cardData_ ? demandUsb(options, "--card-data") : Outcome();
    }

    Width width() const { return long_ ? Width::Whole : Width::AsNeeded; }

    Outcome readCards(const Device& device, const Options& options, Output& output) const {
        if (watch_ || wait_ > 0)
            catchInterrupts();
        if (!watch_)
            return readOne(device, options, output);
        showProgress("watching " + device.name + ", Ctrl-C ends");
        return watchField(width(), device, options, output);
    }

    Outcome readOne(const Device& device, const Options& options, Output& output) const {
        const Reading reading = awaitCard(device);
        if (interrupted())
            return interruption();
        if (reading.error != 0)
            return readFailed(device, reading);
        if (!reading.card)
            return noCard(device);
        if (options.json)
            output.object(cardJson(*reading.card, device));
        else
            output.line(cardLine(*reading.card, device));
        return {};
    }

    Reading awaitCard(const Device& device) const {
        const auto end = Clock::now() + std::chrono::duration<double>(wait_);
        Reading reading = readField(width());
        if (isAwaited(reading) && wait_ > 0)
            showProgress("hold a card to " + device.name);
        while (isAwaited(reading) && Clock::now() < end && !interrupted()) {
            pauseFor(kLookEvery);
            reading = readField(width());
        }
        return reading;
    }

    static bool isAwaited(const Reading& reading) { return reading.error == 0 && !reading.card; }

    bool watch_ = false;
    bool long_ = false;
    bool queued_ = false;
    bool cardData_ = false;
    double wait_ = 0;
};

} // namespace

std::unique_ptr<Command> command::read() { return std::make_unique<ReadCommand>(); }

} // namespace zel::cli
