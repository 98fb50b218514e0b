// SPDX-License-Identifier: MIT
// A simulated proximity reader's services: beeps, names and numbers, volume, radio, a queued
// identifier.
#pragma once

#include "sim/tag/card.h"
#include "sim/tag/settings.h"

namespace zel::sim {

class TagServices {
public:
    explicit TagServices(TagOptions& options) : options_(options) {}

    // Carries a service command out; the result is the reply, all zeros where the reader has no
    // such service.
    TagBlock run(const TagBlock& command);

    void queue(const QueuedId& entry) { queued_ = entry; }

    int beeps() const { return beeps_; }
    std::uint8_t lastBeep() const { return lastBeep_; }

private:
    TagBlock queuedPage(std::size_t page) const;
    TagBlock beep(std::uint8_t code);
    TagBlock nameCharacter(std::uint8_t which, std::uint8_t index) const;
    TagBlock serialNumberPage(std::size_t page) const;
    TagBlock volume() const;
    TagBlock setVolume(const TagBlock& command);
    TagBlock radio() const;
    TagBlock setRadio(const TagBlock& command);

    TagOptions& options_;
    QueuedId queued_;
    int beeps_ = 0;
    std::uint8_t lastBeep_ = 0;
};

} // namespace zel::sim
