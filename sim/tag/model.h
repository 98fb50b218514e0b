// SPDX-License-Identifier: MIT
// What a simulated proximity reader holds, and its commands.
#pragma once

#include "sim/tag/card.h"
#include "sim/tag/multi.h"
#include "sim/tag/services.h"
#include "sim/tag/settings.h"
#include "sim/wire/busy.h"

#include <functional>

namespace zel::sim {

class TagModel {
public:
    static constexpr std::uint16_t kDeviceId = 0x0142;

    explicit TagModel(TagOptions made);
    TagModel(const TagModel&) = delete;
    TagModel& operator=(const TagModel&) = delete;

    // Carries a command out; its reply tells what the reader holds when it is fetched.
    void run(const TagBlock& command);
    TagBlock reply();

    // Takes the data that a command writes.
    void write(const TagBlock& command, const TagBlock& data);

    const TagBlock& command() const { return command_; } // the last one

    // Microseconds until the reader is done with what it was told.
    std::uint64_t remainingWork() const { return busy_.remaining(); }

    void powerUp();

    TagOptions options;
    TagMemory memory;
    TagServices services;
    TagMulti multi;
    std::function<Card()> field; // asked for the card at each read

private:
    void runMulti();
    void commit(const TagBlock& before);
    TagBlock luid() const;
    TagBlock cardType() const;
    TagBlock idPage(unsigned page);
    TagBlock cardData(unsigned kind, unsigned block);
    TagBlock* addressedBlock();
    TagBlock* addressedPage();

    Busy busy_;
    Card latched_; // the card that the read under way delivers
    TagBlock command_ = {};
    TagBlock result_ = {}; // of the last service or TagPlus command
};

} // namespace zel::sim
