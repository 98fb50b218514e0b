// SPDX-License-Identifier: MIT
// A simulated proximity reader's boot loader: it takes a firmware's lines, three reports each.
#pragma once

#include "sim/tag/settings.h"
#include "sim/wire/busy.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace zel::sim {

// What a boot loader says of itself with each line that it accepts, as its letter.
enum class TagBootKind : std::uint8_t {
    Slow = 0,         // needs pauses between reports and long ones before polls
    FastFrames = ';', // takes the reports of a line without pauses
    Fast = '>',       // and has its reply ready at once
    Lark = 'W',       // tells its letter when it is entered too, and may ask for time
};

struct TagBootOptions {
    TagBootKind kind = TagBootKind::Slow;
    int entryBusy = 0;             // answers "T" until it is ready
    int lineBusy = 0;              // and until it tells of a line
    std::uint16_t delay = 0;       // ms that it asks for with each accepted line
    int lines = 0;                 // of a whole firmware, which then starts; 0: it stays
    int powerCutAfter = 0;         // lines; 0: never
    bool comesBack = true;         // false: entered, it never answers
    std::map<int, TagBlock> reply; // to line n, in place of its own; 0: to being entered
};

class TagBoot {
public:
    TagBootOptions& options() { return options_; }

    // Whether it runs in place of the firmware, and whether the power went.
    bool isRunning() const { return state_ != State::Away; }
    bool hasPower() const { return hasPower_; }

    // Without a whole firmware the reader comes up in its boot loader, which must be entered anew.
    void powerUp();

    // The enter report erases what was flashed so far.
    void enter(std::uint8_t micro);
    std::uint8_t micro() const { return micro_; }

    // What the accepted lines hold, one behind the other, and how many they are.
    const std::vector<std::uint8_t>& memory() const { return memory_; }
    int lines() const { return lines_; }

    // Microseconds by which an exchange comes too early now.
    std::uint64_t tooEarly() const { return busy_.remaining(); }

    // A report that isn't a frame is none of its business. False: it doesn't answer.
    void take(const TagBlock& report);
    bool answer(TagBlock& reply);

    std::string nameOf(std::span<const std::uint8_t> report) const;

private:
    enum class State { Away, Waiting, Entering, Ready };

    TagBlock answerToEntry();
    TagBlock answerToLine();
    TagBlock verdict() const;
    void judge(const TagBlock& reply);
    void accept(const TagBlock& reply);
    void expectLine();
    std::uint64_t pollPause() const;
    bool isLineWhole() const;

    TagBootOptions options_;
    State state_ = State::Away;
    bool hasPower_ = true;
    std::uint8_t micro_ = 0;
    std::vector<std::uint8_t> memory_;
    std::vector<std::uint8_t> line_; // the line under way
    int frames_ = 0;                 // of it
    int polls_ = 0;                  // for it
    int lines_ = 0;
    int busyAnswers_ = 0;         // still to give
    std::uint8_t lastDetail_ = 0; // of an accepted line
    Busy busy_;
};

} // namespace zel::sim
