// SPDX-License-Identifier: MIT
// The exported calls that check and load firmware, and the texts that they answer with.
#include "frame/zelTagFiles.h"
#include "tests/firmware/firmware_file.h"
#include "tests/firmware/flash_test.h"
#include "tests/firmware/message_texts.h"

#include <cstring>

using namespace zel::test;

namespace {

constexpr char kDone[] = "Your operation is successfully executed.";
constexpr char kFailed[] = "Bootload API failed.";

class FirmwareLoad : public FlashTest {
protected:
    FirmwareLoad() {
        errorString = "earlier";
        writeText("good.hex", FirmwareFile{}.text());
    }
    ~FirmwareLoad() override { errorString.clear(); }

    // A reader that the good file is for.
    static std::shared_ptr<zel::sim::TagReader> connectKnownReader() {
        const auto reader = connectReader();
        std::strcpy(DevDat[0].szPartNum, "ZT7");
        std::strcpy(DevDat[0].szFWFile, "ZT7_0302");
        return reader;
    }
};

class FirmwareRefusal : public FirmwareLoad {};

} // namespace

TEST_F(FirmwareLoad, WithoutADeviceFailsAndLeavesTheMessageAlone) {
    EXPECT_STREQ(CheckRulesAndBootload("good.hex"), kFailed);
    EXPECT_EQ(errorString, "earlier");
}

TEST_F(FirmwareLoad, WithAnIndexOutsideTheTableFails) {
    connectKnownReader();
    for (const short index : std::initializer_list<short>{-1, 1, 127, -32768}) {
        iActDev = index;
        EXPECT_STREQ(CheckRulesAndBootload("none.hex"), kFailed) << index;
    }
    EXPECT_EQ(errorString, "earlier");
}

TEST_F(FirmwareLoad, WithADeviceThatIsNotOnUsbFails) {
    connectKnownReader();
    for (const unsigned short type : std::initializer_list<unsigned short>{1, 2}) {
        DevDat[0].iDevType = type;
        EXPECT_STREQ(CheckRulesAndBootload("none.hex"), kFailed) << type;
    }
    EXPECT_EQ(errorString, "earlier");
}

TEST_F(FirmwareLoad, WithAnotherFamilyFailsAndLeavesTheMessageAlone) {
    connectKnownReader();
    for (const unsigned product : {0U, 2U, 4U}) {
        DevDat[0].iProduct = product;
        EXPECT_STREQ(CheckRulesAndBootload("none.hex"), kFailed) << product;
    }
    EXPECT_EQ(errorString, "earlier");
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareLoad, IsDoneWhenTheBootLoaderTookTheFile) {
    const auto reader = connectKnownReader();
    EXPECT_STREQ(CheckRulesAndBootload("good.hex"), kDone);
    EXPECT_EQ(reader->bootLoader().memory().size(), 21U);
    EXPECT_EQ(errorString, "earlier");
    EXPECT_EQ(GetLastLibErr(), 0);
}

TEST_F(FirmwareLoad, FailsWhenTheBootLoaderRefuses) {
    const auto reader = connectKnownReader();
    reader->bootLoader().options().reply[0] = {0, 'N'};
    EXPECT_STREQ(CheckRulesAndBootload("good.hex"), kFailed);
    EXPECT_EQ(errorString, "earlier");
    EXPECT_EQ(GetLastLibErr(), 0x90100000);
}

TEST_F(FirmwareLoad, WithoutTheRulesNeverTouchesTheMessage) {
    connectKnownReader();
    writeText("bad.hex", "M0\n:00\n");
    EXPECT_EQ(Bootload("bad.hex"), 1);
    EXPECT_EQ(Bootload("none.hex"), 0);
    EXPECT_EQ(errorString, "earlier");
}

TEST_F(FirmwareRefusal, IsTheMessageOfTheRuleWithNothingSent) {
    connectKnownReader();
    const struct {
        FirmwareHeader header;
        int code;
    } rows[] = {{{.newName = "ZT7"}, 221},
                {{.readerFirmware = "ZT7_0301"}, 207},
                {{.newName = "ZT8_0303_TEST"}, 209},
                {{.newName = "ZT7_03006"}, 210},
                {{.newName = "TKG_03031"}, 211},
                {{.newName = "ZT7_03000TKA"}, 212},
                {{.ps = "256"}, 213},
                {{.newName = "ZT7_03000TKD"}, 214},
                {{.newName = "ZT7_03000TKF"}, 215},
                {{.newName = "ZT7_03000_____X"}, 217}};
    for (const auto& row : rows) {
        writeText("bad.hex", FirmwareFile{.header = row.header.lines()}.text());
        EXPECT_EQ(CheckRulesAndBootload("bad.hex"), messageOf(row.code));
    }
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareRefusal, OfTheSecondProcessorsBootLoaderIs216) {
    connectKnownReader();
    DevDat[0].iTagPlusState = 2;
    DevDat[0].FWVerTbl[1][1] = 0x010408;
    EXPECT_EQ(CheckRulesAndBootload("good.hex"), messageOf(216));
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareRefusal, OfAFileWithoutAHeaderIs205) {
    connectKnownReader();
    writeText("bad.hex", FirmwareFile{.header = {}}.text());
    EXPECT_EQ(CheckRulesAndBootload("bad.hex"), messageOf(205));
}

TEST_F(FirmwareRefusal, OfNoFileOrADamagedOneIs11) {
    connectKnownReader();
    writeText("bad.hex", FirmwareFile{}.text() + "0");
    for (const char* const name :
         std::initializer_list<const char*>{"bad.hex", "none.hex", ".", "", nullptr})
        EXPECT_EQ(CheckRulesAndBootload(name), messageOf(11)) << name;
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FirmwareRefusal, IsTheBufferOfTheLastMessageAndOutlivesTheNextSuccess) {
    connectKnownReader();
    const char* const refusal = CheckRulesAndBootload("none.hex");
    EXPECT_EQ(refusal, errorString.c_str());
    EXPECT_STREQ(CheckRulesAndBootload("good.hex"), kDone);
    EXPECT_EQ(errorString, messageOf(11));
}

TEST_F(FirmwareLoad, NeedsAFileToTellOf) {
    zelFirmwareFile file = {};
    EXPECT_EQ(zelTagAPI_readFirmware(nullptr, &file), 0);
    EXPECT_EQ(zelTagAPI_readFirmware("good.hex", nullptr), 0);
    EXPECT_EQ(zelTagAPI_readFirmware("none.hex", &file), 0);
    EXPECT_EQ(zelTagAPI_readFirmware("good.hex", &file), 1);
}
