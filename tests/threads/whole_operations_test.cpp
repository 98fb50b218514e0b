// SPDX-License-Identifier: MIT
// What the seven locked calls do on the wire while several threads make them.
#include "tests/threads/threads_test.h"

#include <algorithm>
#include <functional>
#include <sched.h>

using namespace zel::test;

namespace {

using Wire = std::vector<std::string>;
using Operation = std::function<bool()>; // whether it succeeded

constexpr int kRounds = 50;
constexpr int kMostTries = 1'000'000;

bool pollId() {
    unsigned char id[ZELTAGAPI_ID_SIZE];
    return GetActiveID(id, 8) == 26;
}

bool pollLongId() {
    unsigned char id[ZELTAGAPI_ID_SIZE];
    return GetActiveID32(id, sizeof id) == 26;
}

bool beepTwice() { return BeepNow(2, 0) != 0; }
bool writeAll() { return WriteCfg() != 0; }
bool readAll() { return ReadCfg() != 0; }
bool connectAll() { return USBConnect(nullptr) != 0; }
bool disconnectAll() { return USBDisconnect() != 0; }

// Changes a setting and writes it. An application that changes settings beside other threads holds
// the exported lock meanwhile; the write takes it anew.
template <std::int16_t holdTime> bool writeHoldTime() {
    sTimeParms times{};
    pthread_mutex_lock(&zelLock);
    GetTimeParms(&times);
    times.iIDHoldTO = holdTime;
    SetTimeParms(&times);
    pthread_mutex_unlock(&zelLock);
    return WriteCfg() != 0;
}

const Wire kPoll = {"> 8F 00 00 00 00 00 00 00", "< 71 1B 34 00 00 00 00 00",
                    "> 8E 00 00 00 00 00 00 00", "< 1A 00 00 00 00 00 00 00"};
const Wire kLongPoll = {"> 8D 00 00 00 00 00 00 00", "< 71 1B 34 00 00 00 00 00",
                        "> 8D 01 00 00 00 00 00 00", "< 00 00 00 00 00 00 00 00",
                        "> 8D 02 00 00 00 00 00 00", "< 00 00 00 00 00 00 00 00",
                        "> 8D 03 00 00 00 00 00 00", "< 00 00 00 00 00 00 00 00",
                        "> 8E 00 00 00 00 00 00 00", "< 1A 00 00 00 00 00 00 00"};
const Wire kBeep = {"> 8C 03 02 00 00 00 00 00", "< 00 00 00 00 00 00 00 00"};
// The factory's times but for byte 2: 40 units of 50 ms.
const Wire kWrite = {"> 81 00 00 00 00 00 00 00", "> 00 10 28 28 01 01 00 00",
                     "> 90 02 00 00 00 00 00 00", "> 8C 06 00 00 00 00 00 00",
                     "< 00 00 00 00 00 00 00 00"};

// The operations that a member repeats in turn.
using Plan = std::vector<Operation>;

// Without a device an operation fails and does nothing on the wire; it is tried again.
void makeSucceed(const Operation& operation) {
    for (int tries = 0; tries < kMostTries && !operation(); ++tries)
        sched_yield();
}

void repeat(const Plan& plan) {
    for (int round = 0; round < kRounds; ++round)
        for (const Operation& operation : plan)
            makeSucceed(operation);
}

bool isWhole(std::vector<Event>::const_iterator from, std::vector<Event>::const_iterator end,
             const Wire& wire) {
    return !wire.empty() && end - from >= static_cast<std::ptrdiff_t>(wire.size()) &&
           std::equal(wire.begin(), wire.end(), from,
                      [from](const std::string& text, const Event& event) {
                          return event.member == from->member && event.text == text;
                      });
}

class LockedCalls : public ThreadsTest {
protected:
    // Runs the plans at once. How many operations of each are on the wire, up to the first one that
    // isn't whole.
    std::vector<int> run(const std::vector<Plan>& plans) {
        learn(plans);
        Crew crew(static_cast<int>(plans.size()));
        for (const Plan& plan : plans)
            crew.start([&plan] { repeat(plan); });
        crew.join();
        return follow(takeEvents());
    }

private:
    // The second time shows what an operation does when it is repeated.
    void learn(const std::vector<Plan>& plans) {
        for (int time = 0; time < 2; ++time) {
            wires_.clear();
            for (const Plan& plan : plans) {
                wires_.emplace_back();
                for (const Operation& operation : plan)
                    wires_.back().push_back(wireOf(operation));
            }
        }
    }

    std::vector<int> follow(const std::vector<Event>& events) const {
        std::vector<int> whole(wires_.size(), 0);
        for (auto event = events.begin(); event != events.end();) {
            const auto member = static_cast<std::size_t>(event->member);
            const auto turn = static_cast<std::size_t>(whole[member]);
            const Wire& wire = wires_[member][turn % wires_[member].size()];
            if (!isWhole(event, events.end(), wire))
                break;
            ++whole[member];
            event += static_cast<std::ptrdiff_t>(wire.size());
        }
        return whole;
    }

    std::vector<std::vector<Wire>> wires_; // of each member, of each operation of its plan
};

} // namespace

TEST_F(LockedCalls, HaveTheseExchangesAlone) {
    EXPECT_EQ(wireOf(pollId), kPoll);
    EXPECT_EQ(wireOf(pollLongId), kLongPoll);
    EXPECT_EQ(wireOf(beepTwice), kBeep);
    EXPECT_EQ(wireOf(writeHoldTime<2000>), kWrite);
}

TEST_F(LockedCalls, KeepTheirExchangesTogether) {
    const std::vector<int> all = {kRounds, kRounds, kRounds, 4 * kRounds};
    EXPECT_EQ(run({{pollId},
                   {pollLongId},
                   {beepTwice},
                   {writeHoldTime<2000>, readAll, writeHoldTime<1000>, readAll}}),
              all);
}

TEST_F(LockedCalls, KeepThemTogetherWhileTheReaderIsConnectedAnew) {
    const std::vector<int> all = {2 * kRounds, kRounds, kRounds, kRounds, kRounds, kRounds};
    EXPECT_EQ(run({{disconnectAll, connectAll},
                   {pollId},
                   {pollLongId},
                   {beepTwice},
                   {writeAll},
                   {readAll}}),
              all);
}
