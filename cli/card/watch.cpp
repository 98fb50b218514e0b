// SPDX-License-Identifier: MIT
// The loop behind `zeltag read --watch`.
#include "cli/card/watch.h"

#include "cli/command/interrupt.h"

#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr int kFailuresInRow = 2; // one lost reply is no reason to stop

class FieldWatch {
public:
    FieldWatch(Width width, const Device& device, const Options& options, Output& output)
        : width_(width), device_(device), options_(options), output_(output) {}

    Outcome look() {
        const Reading reading = readField(width_);
        failures_ = reading.error == 0 ? 0 : failures_ + 1;
        if (failures_ >= kFailuresInRow)
            return readFailed(device_, reading);
        if (reading.error == 0)
            follow(reading.card);
        return {};
    }

private:
    void follow(const std::optional<Identifier>& card) {
        if (card == last_)
            return;
        if (last_)
            tellGone();
        if (card)
            tellCard(*card);
        last_ = card;
    }

    void tellGone() {
        if (options_.json)
            output_.object(Json{{"event", "gone"}, {"device", toJson(device_)}});
        else
            output_.line("gone");
    }

    void tellCard(const Identifier& card) {
        if (!options_.json)
            return output_.line(cardLine(card, device_));
        Json event = {{"event", "card"}};
        event.update(cardJson(card, device_));
        output_.object(event);
    }

    const Width width_;
    const Device& device_;
    const Options& options_;
    Output& output_;
    std::optional<Identifier> last_;
    int failures_ = 0;
};

} // namespace

Outcome watchField(Width width, const Device& device, const Options& options, Output& output) {
    FieldWatch watch(width, device, options, output);
    while (!interrupted() && output.isOpen()) {
        if (auto failure = watch.look())
            return failure;
        pauseFor(kLookEvery);
    }
    return interrupted() ? Outcome(interruption()) : Outcome();
}

} // namespace zel::cli
