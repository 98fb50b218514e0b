// SPDX-License-Identifier: MIT
// A reader's services and card data by frames.
#include "family/tag/services.h"
#include "frame/zelTagAPI.h"
#include "tests/family/tag/stream_test.h"

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace zel::test;

namespace {

constexpr std::int64_t kFailed = 0x1000000;

class ScriptedService : public StreamTest {
protected:
    std::shared_ptr<Script> script_ = connectScript();
};
class StreamBeep : public ScriptedService {};
class StreamNumber : public ScriptedService {};
class StreamText : public ScriptedService {};
class StreamVersion : public ScriptedService {
protected:
    StreamVersion() {
        record().iTagPlusState = 2;
        record().FWVerTbl[1][2] = 0x55;
    }
};
class StreamQueuedId : public ScriptedService {
protected:
    StreamQueuedId() {
        std::memset(&QueuedID, 0xEE, sizeof QueuedID);
        std::memset(activeIDBuf, 0xDD, sizeof activeIDBuf);
    }
    ~StreamQueuedId() override { std::memset(&QueuedID, 0, sizeof QueuedID); }
};
class StreamCardData : public ScriptedService {};
class StreamRawPayload : public ScriptedService {};

} // namespace

TEST_F(StreamBeep, IsACommand) {
    script_->answer("90 00");
    record().lLastErr = 5;
    EXPECT_EQ(BeepNow(9, 1), 1);
    EXPECT_EQ(told(), "> FA 0C 03 82 00\n~ 5 ms\n< 90 00\n");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamBeep, ThatFailsIsToldByTheStatusWordAlone) {
    script_->answer("6D 00");
    EXPECT_EQ(BeepNow(0, 0), 0);
    EXPECT_EQ(told(), "> FA 0C 03 01 00\n~ 5 ms\n< 6D 00\n");
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(lLastICSWErr, 0x6D00U);
}

TEST_F(StreamNumber, OfTheVolumeHasOneByteAndNoStatusWord) {
    script_->answer("0C 00");
    EXPECT_EQ(GetBeeperVolume(), 0) << "0 is a volume here";
    EXPECT_EQ(told(), reading("0C 06 00 00", "0C 00"));
    script_->answer("6D 00");
    EXPECT_EQ(GetBeeperVolume(), -1);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamNumber, SetsTheVolumeInP2) {
    script_->answer("0C 90 00");
    EXPECT_EQ(SetBeeperVolume(2), 1);
    EXPECT_EQ(told(), reading("0C 86 02 00", "0C 90 00"));
    script_->answer("0C 6F 00");
    EXPECT_EQ(SetBeeperVolume(2), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamNumber, IsALineSpeed) {
    record().lLastErr = 5;
    script_->answer("0D 03");
    EXPECT_EQ(ReadBaudRate(), 3);
    EXPECT_EQ(told(), reading("0D 01 00 00", "0D 03"));
    script_->answer("0D 90 00");
    EXPECT_EQ(WriteBaudRate(4), 1);
    EXPECT_EQ(told(), reading("0D 81 04 00", "0D 90 00"));
    EXPECT_EQ(ReadBaudRate(), -1);
    EXPECT_EQ(WriteBaudRate(4), 0);
    EXPECT_EQ(GetLastLibErr(), 5) << "left alone";
}

TEST_F(StreamNumber, TellsAFastReaderByItsVolume) {
    script_->answer("0C 00");
    EXPECT_EQ(IsFastWriteReader(), 1);
    EXPECT_EQ(IsFastWriteReader(), 0);
}

TEST_F(StreamText, OfThePartNumberIsThreeCharacters) {
    for (const char* const answer :
         {"0C 41 00 00 00 00 00 00 00", "0C 42 00 00 00 00 00 00 00", "0C 43 00 00 00 00 00 00 00"})
        script_->answer(answer);
    EXPECT_STREQ(zeltag_getPartNumberString(), "ABC");
    EXPECT_EQ(told(), partNumberCharacter("00", "41") + partNumberCharacter("01", "42") +
                          partNumberCharacter("02", "43"));
}

TEST_F(StreamText, OfThePartNumberIsNullWithoutAWordAtTheFirstFailure) {
    script_->answer("0C 41 00 00 00 00 00 00 00");
    script_->answer("6D 00");
    EXPECT_EQ(zeltag_getPartNumberString(), nullptr);
    EXPECT_EQ(told(), partNumberCharacter("00", "41") + reading("0C 01 01 00", "6D 00"));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamText, OfTheFirmwareFailsAtOnceWithoutAUsbHandle) {
    EXPECT_EQ(zeltag_GetFWFilename(), nullptr);
    EXPECT_EQ(GetLastLibErr(), 0x50000000);
    EXPECT_EQ(zeltag_GetFullFWVersion(), nullptr);
    EXPECT_EQ(GetLastLibErr(), 0x70000000);
    EXPECT_EQ(told(), "") << "neither a report nor a pause";
}

TEST_F(StreamVersion, IsFourBytesBehindItsEcho) {
    script_->answer("09 03 01 02 12 34 56 78 90 00");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 0x12345678U);
    EXPECT_EQ(told(), reading("09 03 01 02", "09 03 01 02 12 34 56 78 90 00"));
    EXPECT_EQ(record().FWVerTbl[1][2], 0x55U) << "the table is the caller's";
}

TEST_F(StreamVersion, CountsAlsoWhereTheExchangeFails) {
    script_->answer("09 03 01 02 12 34 56 78 6F 00");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 0x12345678U);
    script_->answer("09 03 01 02 12");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 0x12000000U);
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamVersion, WithoutItsEchoIsTheResultOfTheExchange) {
    script_->answer("09 03 02 02 12 34 56 78 90 00");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 1U) << "of another unit";
    script_->answer("09 02 01 02 12 34 56 78 90 00");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 1U);
    script_->answer("09 02 01 02 12 34 56 78 6F 00");
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(1, 2), 0U);
    EXPECT_EQ(record().FWVerTbl[1][2], 0x55U);
}

TEST_F(StreamVersion, IsOfAMultiConfigurationReader) {
    record().iTagPlusState = 1;
    EXPECT_EQ(zeltag_SendGetFirmwareVersion(0, 0), 0U);
    EXPECT_EQ(told(), "");
}

TEST_F(StreamQueuedId, Has100MsBehindEachPage) {
    std::string trace;
    for (int page = 0; page < 5; ++page) {
        const std::string number = "0" + std::to_string(page);
        const std::string answer = "0C E" + std::to_string(page) + " 01 02 03 04 05 06 07";
        script_->answer(answer);
        trace += reading("0C 02 " + number + " 03", answer) + "~ 100 ms\n";
    }
    EXPECT_EQ(GetQueuedID(1, -1), 1);
    EXPECT_EQ(told(), trace);
    EXPECT_EQ(QueuedID.id[0], 0xE0);
    EXPECT_EQ(QueuedID.id[31], 7);
    EXPECT_EQ(QueuedID.age, 0x01E4U);
    EXPECT_EQ(QueuedID.byte42, 2);
    EXPECT_EQ(QueuedID.word40, 0x0403);
    EXPECT_EQ(QueuedID.byte43, 7);
    EXPECT_EQ(activeIDBuf[24], 0xE3);
}

TEST_F(StreamQueuedId, IsNotClearedBefore) {
    script_->answer("0C 01 02 03 04 05 06 07 08");
    script_->answer("6D 00");
    EXPECT_EQ(GetQueuedID(0, 0), 0);
    EXPECT_EQ(QueuedID.id[7], 8);
    EXPECT_EQ(QueuedID.id[8], 0xEE);
    EXPECT_EQ(QueuedID.byte43, 0xEE);
    EXPECT_EQ(activeIDBuf[0], 0xEE) << "what stood there before the page";
    EXPECT_EQ(GetLastLibErr(), kFailed);
}

TEST_F(StreamCardData, IsClearedAndNeverThere) {
    std::memset(activeCardDataBuf, 0xEE, sizeof activeCardDataBuf);
    record().lLastErr = 5;
    EXPECT_EQ(getActiveCardData(), 0);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(std::count(std::begin(activeCardDataBuf), std::end(activeCardDataBuf), 0),
              static_cast<long>(sizeof activeCardDataBuf));
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(StreamRawPayload, IsAFrameOfTheCallersAndItsReplyStandsAtTheFront) {
    script_->answer("0C A0 A1 A2 A3 A4 A5 A6 A7");
    EXPECT_STREQ(SetRawPayload(0xFA, 0x0C, 1, 2, 3, 0x44, 0x55, 0x66), "A1.A2.A3.A4.A5.A6.A7.00");
    EXPECT_EQ(told(), reading("0C 01 02 03", "0C A0 A1 A2 A3 A4 A5 A6 A7"));
    EXPECT_EQ(GetRawPayload_index(0), 0xA0);
    EXPECT_EQ(GetRawPayload_index(8), 0);
}

TEST_F(StreamRawPayload, HasAClassByteOfTheCallersToo) {
    script_->answer("");
    script_->answer("0C A0 A1 A2 A3 A4 A5 A6 A7");
    SetRawPayload(0x77, 0x0C, 1, 2, 3, 0, 0, 0);
    EXPECT_EQ(told(), "> \"w\"\n~ 50 ms\n> 0C 01 02 03\n~ 5 ms\n< 0C A0 A1 A2 A3 A4 A5 A6 A7\n");
}

TEST_F(StreamRawPayload, ForgetsTheReplyWhenTheExchangeFails) {
    script_->answer("0C A0 A1 A2 A3 A4 A5 A6 A7");
    SetRawPayload(0xFA, 0x0C, 1, 2, 3, 0, 0, 0);
    script_->answer("6D 00");
    EXPECT_EQ(SetRawPayload_index(8, 0), 0);
    EXPECT_EQ(GetRawPayload_index(0), 0);
    EXPECT_EQ(lLastICSWErr, 0x6D00U);
}
