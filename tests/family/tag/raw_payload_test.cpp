// SPDX-License-Identifier: MIT
// Reports of the caller's choice, byte by byte and at one go.
#include "family/tag/card_data.h"
#include "tests/family/tag/config_test.h"

#include <cstring>
#include <vector>

using namespace zel::test;

namespace {

using Bytes = std::vector<int>;

const std::string kZeros = "00.00.00.00.00.00.00.00";
const std::string kSent = "> 7B 01 02 03 04 05 06 07\n";
const std::string kReply = "< F1 F2 F3 F4 F5 F6 F7 F8\n";

class RawPayload : public ConfigTest {
protected:
    RawPayload() : reader_(connectReader()) {
        reader_->replyWith({0x7B}, {0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6, 0xF7, 0xF8});
        SetRawPayload_index(0, 0);
    }
    ~RawPayload() override { zeltag_SetRawPayload_index(0, 0); }

    // Opcode 7B and its arguments but the last, at places 1 to 7.
    static void build() {
        EXPECT_EQ(SetRawPayload_index(0, 0), 1);
        EXPECT_EQ(SetRawPayload_index(1, 0x7B), 1);
        for (short index = 2; index < 8; ++index)
            EXPECT_EQ(SetRawPayload_index(index, static_cast<short>(index - 1)), 1);
    }

    static int sendAll() {
        build();
        return SetRawPayload_index(8, 7);
    }

    static Bytes reply() {
        Bytes bytes;
        for (short index = 0; index < 10; ++index)
            bytes.push_back(GetRawPayload_index(index));
        return bytes;
    }

    static Bytes answered() { return {0, 0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6, 0xF7, 0xF8, 0}; }

    static const char* sendAtOneGo() { return SetRawPayload(0x7B, 1, 2, 3, 4, 5, 6, 7); }

    std::shared_ptr<zel::sim::TagReader> reader_;
};

} // namespace

TEST_F(RawPayload, IsSentWithItsEighthByte) {
    record().lLastErr = 0x55;
    build();
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(SetRawPayload_index(8, 7), 1);
    EXPECT_EQ(bus().takeTrace(), kSent + kReply);
    EXPECT_EQ(GetLastLibErr(), 0x55) << "the exchange has no error word";
}

TEST_F(RawPayload, HasItsReplyAtPlaces1To8) {
    EXPECT_EQ(sendAll(), 1);
    EXPECT_EQ(reply(), answered());
    EXPECT_EQ(bus().takeTrace(), kSent + kReply) << "places are read without a device";
}

TEST_F(RawPayload, IsSentAgainByPlace9WhichIsNoPartOfIt) {
    sendAll();
    bus().takeTrace();
    EXPECT_EQ(SetRawPayload_index(9, 0x99), 1);
    EXPECT_EQ(bus().takeTrace(), kSent + kReply);
    EXPECT_EQ(GetRawPayload_index(9), 0);
}

TEST_F(RawPayload, IsSentAgainByPlacesThatDoNotExist) {
    sendAll();
    bus().takeTrace();
    for (const short index : std::initializer_list<short>{10, 11, 32, 33, 256, 32767}) {
        EXPECT_EQ(SetRawPayload_index(index, 0x99), 1);
        EXPECT_EQ(bus().takeTrace(), kSent + kReply) << index;
    }
}

TEST_F(RawPayload, IsNothingAtANegativePlace) {
    build();
    for (const short index : std::initializer_list<short>{-1, -9, -32768})
        EXPECT_EQ(SetRawPayload_index(index, 0x99), 0) << index;
    EXPECT_EQ(bus().takeTrace(), "");
    SetRawPayload_index(8, 7);
    EXPECT_EQ(bus().takeTrace(), kSent + kReply) << "nothing was stored";
}

TEST_F(RawPayload, KeepsItsBytesUntilPlace0ClearsRequestAndReply) {
    sendAll();
    EXPECT_EQ(SetRawPayload_index(0, 0), 1);
    EXPECT_EQ(reply(), Bytes(10, 0));
    bus().takeTrace();
    SetRawPayload_index(8, 7);
    EXPECT_EQ(bus().takeTrace(), "> 00 00 00 00 00 00 00 07\n"
                                 "< 00 00 00 00 00 00 00 00\n");
    SetRawPayload_index(1, 0x7B);
    SetRawPayload_index(10, 0);
    EXPECT_TRUE(bus().takeTrace().starts_with("> 7B 00 00 00 00 00 00 07\n"));
}

TEST_F(RawPayload, GoesOutAsReportZeroWhateverStandsAtPlace0) {
    EXPECT_EQ(SetRawPayload_index(0, 5), 1);
    EXPECT_EQ(SetRawPayload_index(1, 0x7B), 1);
    EXPECT_EQ(SetRawPayload_index(8, 0), 1);
    EXPECT_EQ(bus().takeTrace(), "> 7B 00 00 00 00 00 00 00\n" + kReply);
}

TEST_F(RawPayload, HasTheLowEightBitsOfAValue) {
    SetRawPayload_index(1, 0x107B);
    SetRawPayload_index(2, -1);
    SetRawPayload_index(8, static_cast<short>(0xFF80));
    EXPECT_EQ(bus().takeTrace(), "> 7B FF 00 00 00 00 00 80\n" + kReply);
}

TEST_F(RawPayload, ReadsAs2AtAPlaceThatDoesNotExist) {
    sendAll();
    for (const short index : std::initializer_list<short>{10, 11, 33, 32767, -1, -32768})
        EXPECT_EQ(GetRawPayload_index(index), 2) << index;
}

TEST_F(RawPayload, ThatIsRefusedKeepsTheReplyBefore) {
    sendAll();
    bus().takeTrace();
    failFor(1);
    EXPECT_EQ(SetRawPayload_index(8, 7), 0);
    EXPECT_EQ(bus().takeTrace(), refused("> 7B 01 02 03 04 05 06 07"));
    EXPECT_EQ(reply(), answered());
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(RawPayload, WithoutAnAnswerHasNoReply) {
    sendAll();
    bus().takeTrace();
    bus().failExchange(0, 2);
    EXPECT_EQ(SetRawPayload_index(8, 7), 0);
    EXPECT_EQ(bus().takeTrace(), kSent + "! no answer\n");
    EXPECT_EQ(takePausedMicroseconds(), 0U);
    EXPECT_EQ(reply(), Bytes(10, 0));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(RawPayload, AtOneGoIsTheReplyAsText) {
    EXPECT_STREQ(sendAtOneGo(), "F1.F2.F3.F4.F5.F6.F7.F8");
    EXPECT_EQ(bus().takeTrace(), kSent + kReply);
}

TEST_F(RawPayload, AtOneGoOfZerosHasOpcode0) {
    reader_->replyWith({0}, {0x0A, 0, 0, 0, 0, 0, 0, 0xB0});
    EXPECT_STREQ(SetRawPayload(0, 0, 0, 0, 0, 0, 0, 0), "0A.00.00.00.00.00.00.B0");
    EXPECT_EQ(bus().takeTrace(), "> 00 00 00 00 00 00 00 00\n"
                                 "< 0A 00 00 00 00 00 00 B0\n");
}

TEST_F(RawPayload, AtOneGoThatFailsIsZerosAsText) {
    for (const int exchange : {1, 2}) {
        sendAll();
        failFor(exchange);
        EXPECT_EQ(sendAtOneGo(), kZeros) << exchange;
        bus().failExchange(0, 1, 0);
    }
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(RawPayload, AtOneGoHasOneTextForAllCalls) {
    const char* const text = sendAtOneGo();
    EXPECT_EQ(SetRawPayload(0, 0, 0, 0, 0, 0, 0, 0), text);
    EXPECT_EQ(text, kZeros);
}

TEST_F(RawPayload, AtOneGoCanBeReadByteByByteToo) {
    sendAtOneGo();
    EXPECT_EQ(reply(), answered());
}
