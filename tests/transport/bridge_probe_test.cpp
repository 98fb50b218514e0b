// SPDX-License-Identifier: MIT
// Which bytes of a reply count.
#include "transport/bridge_probe.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string_view>

namespace zel::test {

namespace {

constexpr Ipv4 kHost = {192, 168, 7, 42};

template <class Bytes> void put(Reply& reply, std::ptrdiff_t at, const Bytes& bytes) {
    std::copy(std::begin(bytes), std::end(bytes), reply.begin() + at);
}

Reply firstReply() {
    Reply reply = noReply();
    put(reply, 0, std::string_view("ZTAGDISC\x02"));
    put(reply, 10, std::string_view("\xF4\xF0\xF2\xF0-Norvane/Wedge"));
    put(reply, 29, std::string_view("\x68\xAB\x8A"));
    put(reply, 36, kHost);
    return reply;
}

Reply secondReply(std::string_view maker) {
    Reply reply = noReply();
    put(reply, 0, std::string_view("\0\0\0\xF7", 4));
    put(reply, 24, maker);
    return reply;
}

constexpr std::string_view kOneMaker("\0\x20\x4A", 3);
constexpr std::string_view kOtherMaker("\0\x1D\x4B", 3);

// The offsets that can be changed without a change of the verdict.
template <class Verdict> std::set<std::size_t> freeBytes(const Reply& reply, Verdict counts) {
    std::set<std::size_t> free;
    for (std::size_t at = 0; at < reply.size(); ++at) {
        bool counted = false;
        for (int value = 0; value < 256; ++value) {
            Reply changed = reply;
            changed[at] = static_cast<std::uint8_t>(value);
            counted |= value != reply[at] && counts(changed);
        }
        if (counted)
            free.insert(at);
    }
    return free;
}

void addRange(std::set<std::size_t>& set, std::size_t first, std::size_t last) {
    for (std::size_t at = first; at <= last; ++at)
        set.insert(at);
}

} // namespace

TEST(FirstReply, CountsByItsTextsMarksAndAddress) {
    const auto counts = [](const Reply& reply) { return isFirstReply(reply, kHost); };
    EXPECT_TRUE(counts(firstReply()));
    std::set<std::size_t> free = {9, 28};
    addRange(free, 32, 35);
    addRange(free, 40, 255);
    EXPECT_EQ(freeBytes(firstReply(), counts), free);
}

TEST(FirstReply, CountsForTheHostAskedAlone) {
    for (std::size_t at = 0; at < kHost.size(); ++at) {
        SCOPED_TRACE(at);
        Ipv4 other = kHost;
        ++other[at];
        EXPECT_FALSE(isFirstReply(firstReply(), other));
    }
}

TEST(SecondReply, CountsByItsHeadAndMaker) {
    for (const std::string_view maker : {kOneMaker, kOtherMaker}) {
        const Reply reply = secondReply(maker);
        EXPECT_TRUE(isSecondReply(reply));
        std::set<std::size_t> free;
        addRange(free, 4, 23);
        addRange(free, 27, 255);
        EXPECT_EQ(freeBytes(reply, isSecondReply), free);
    }
}

TEST(SecondReply, DoesNotCountWithHalvesOfTwoMakers) {
    EXPECT_FALSE(isSecondReply(secondReply({"\0\x20\x4B", 3})));
    EXPECT_FALSE(isSecondReply(secondReply({"\0\x1D\x4A", 3})));
}

TEST(SecondReply, TellsTheMacAddress) {
    EXPECT_EQ(macOf(secondReply({"\0\x20\x4A\x01\x02\xFE", 6})),
              (MacAddress{0x00, 0x20, 0x4A, 0x01, 0x02, 0xFE}));
}

TEST(NoReply, CountsAsNeither) {
    EXPECT_FALSE(isFirstReply(noReply(), {255, 255, 255, 255}));
    EXPECT_FALSE(isSecondReply(noReply()));
}

TEST(Probes, AreSentByteByByte) {
    EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(kFirstProbe.data()), 10),
              std::string_view("ZTAGDISC\x01\x00", 10));
    EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(kSecondProbe.data()), 4),
              std::string_view("\0\0\0\xF6", 4));
}

} // namespace zel::test
