// SPDX-License-Identifier: MIT
// A whole flash of a simulated reader: its conversation, its words, and how it fails at each step.
#include "tests/firmware/flash_test.h"

#include <memory>

using namespace zel::test;
using zel::sim::TagBootKind;

namespace {

class FlashOfAReader : public FlashTest {
protected:
    std::shared_ptr<zel::sim::TagReader> connectKind(TagBootKind kind) {
        auto reader = connectReader();
        reader->bootLoader().options().kind = kind;
        return reader;
    }
};

} // namespace

TEST_F(FlashOfAReader, GoesAsOneConversation) {
    const auto reader = connectKind(TagBootKind::Fast);
    reader->bootLoader().options().entryBusy = 1;
    EXPECT_EQ(Bootload(file("M0\n:0102030405060708\n")), 1);
    EXPECT_EQ(bus().takeTrace(), "~ 1000 ms\n"
                                 "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                                 "~ 3000 ms\n"
                                 "< 00 54 00 00 00 00 00 00\n"
                                 "~ 50 ms\n"
                                 "< 00 2E 00 00 00 00 00 00\n"
                                 "* progress\n"
                                 "> 07 01 02 03 04 05 06 07  line 1 frame 1\n"
                                 "~ 10 ms\n"
                                 "> 01 08 00 00 00 00 00 00  line 1 frame 2\n"
                                 "~ 10 ms\n"
                                 "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                                 "~ 10 ms\n"
                                 "~ 2 ms\n"
                                 "< 00 2E 3E 00 00 00 00 00\n"
                                 "* progress\n");
    EXPECT_EQ(DevDat[0].lLastErr, 0);
}

TEST_F(FlashOfAReader, FillsItsMemoryWithTheBytesOfTheFile) {
    for (const TagBootKind kind :
         {TagBootKind::Slow, TagBootKind::FastFrames, TagBootKind::Fast, TagBootKind::Lark})
        for (const char* micro : {"M0", "M1"}) {
            SCOPED_TRACE(::testing::Message() << "kind " << static_cast<int>(kind) << ' ' << micro);
            const auto reader = connectKind(kind);
            reader->bootLoader().options().lineBusy = 2;
            EXPECT_EQ(Bootload(file("PS x\n" + std::string(micro) +
                                    "\n:00ff10\n# not this\n:" + "A1b2C3d4E5f6" + "\n:77\n")),
                      1);
            EXPECT_EQ(reader->bootLoader().micro(), micro[1] - '0');
            EXPECT_EQ(reader->bootLoader().memory(),
                      (std::vector<std::uint8_t>{0x00, 0xFF, 0x10, 0xA1, 0xB2, 0xC3, 0xD4, 0xE5,
                                                 0xF6, 0x77}));
            forget();
            USBDisconnect();
            bus().clear();
            cbIndex = 0;
        }
}

TEST_F(FlashOfAReader, WithoutLinesEntersTheBootLoaderAlone) {
    const auto reader = connectKind(TagBootKind::Slow);
    EXPECT_EQ(Bootload(file("M1\n")), 1);
    EXPECT_EQ(bus().takeTrace(), "~ 1000 ms\n"
                                 "> F0 01 00 00 00 00 00 00  enter boot loader: micro 1\n"
                                 "~ 3000 ms\n"
                                 "< 00 2E 00 00 00 00 00 00\n"
                                 "* progress\n");
}

TEST_F(FlashOfAReader, WithoutAMicroLineGoesTo255AndSendsNoLine) {
    const auto reader = connectKind(TagBootKind::Slow);
    EXPECT_EQ(Bootload(file(":0102\n:03\n")), 1);
    EXPECT_EQ(bus().takeTrace(), "~ 1000 ms\n"
                                 "> F0 FF 00 00 00 00 00 00  enter boot loader: micro 255\n"
                                 "~ 3000 ms\n"
                                 "< 00 2E 00 00 00 00 00 00\n"
                                 "* progress\n");
    EXPECT_EQ(giTargetMicro, 0xFF);
    EXPECT_EQ(takeProgress(), 1);
}

TEST_F(FlashOfAReader, SendsThreeEmptyFramesForABadLine) {
    connectKind(TagBootKind::Fast);
    fastBootloader = 1;
    EXPECT_EQ(Bootload(file("M0\n:0102\r\n")), 1);
    EXPECT_EQ(bus().takeTrace(), "~ 1000 ms\n"
                                 "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                                 "~ 3000 ms\n"
                                 "< 00 2E 00 00 00 00 00 00\n"
                                 "* progress\n"
                                 "> 00 00 00 00 00 00 00 00  line 1 frame 1\n"
                                 "> 00 00 00 00 00 00 00 00  line 1 frame 2\n"
                                 "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                                 "~ 2 ms\n"
                                 "< 00 2E 3E 00 00 00 00 00\n"
                                 "* progress\n");
}

TEST_F(FlashOfAReader, StartsWithWhatTheOneBeforeLearned) {
    connectKind(TagBootKind::FastFrames);
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    bus().takeTrace();
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    EXPECT_EQ(bus().takeTrace(), "~ 1000 ms\n"
                                 "> F0 00 00 00 00 00 00 00  enter boot loader: micro 0\n"
                                 "~ 3000 ms\n"
                                 "< 00 2E 00 00 00 00 00 00\n"
                                 "* progress\n"
                                 "> 07 01 02 03 04 05 06 07  line 1 frame 1\n"
                                 "> 01 08 00 00 00 00 00 00  line 1 frame 2\n"
                                 "> 00 00 00 00 00 00 00 00  line 1 frame 3\n"
                                 "~ 50 ms\n"
                                 "< 00 2E 3B 00 00 00 00 00\n"
                                 "* progress\n");
}

TEST_F(FlashOfAReader, HurriesASlowOneWhenTheOneBeforeWasFast) {
    const auto reader = connectKind(TagBootKind::Fast);
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    reader->bootLoader().options().kind = TagBootKind::Slow;
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    EXPECT_EQ(reader->violations(), 3) << "two frames and a poll";
    forgiveHaste();
}

TEST_F(FlashOfAReader, KeepsItsWordsFromEarlierCalls) {
    const auto reader = connectKind(TagBootKind::Slow);
    DevDat[0].lLastErr = 0x1234;
    EXPECT_EQ(Bootload(fileOf(1)), 1);
    EXPECT_EQ(DevDat[0].lLastErr, 0x1234);
}

// The words of record 0 and of the active one, by the exchange that fails: entry, then two lines of
// three frames and a poll.
TEST_F(FlashOfAReader, FailsAtEachExchange) {
    const Words expected[] = {{0x90300000, 0x90100000},
                              {0x90200000, 0x90100000}, // entry
                              {0x90900000, 0x90700000},
                              {0x90900000, 0x90700000},
                              {0x90900000, 0x90700000}, // line 1
                              {0x90200000, 0x90700000}, //
                              {0x90900000, 0x90700000},
                              {0x90900000, 0x90700000},
                              {0x90900000, 0x90700000}, // line 2
                              {0x90200000, 0x90700000}, //
                              {0, 0}};
    int n = 0;
    for (const Words& words : expected) {
        _APIinit();
        forget();
        const auto readers = connectTwo();
        const int before = bus().exchanges(1);
        bus().failExchange(1, ++n, 6);
        EXPECT_EQ(Bootload(fileOf(2)), words == Words{} ? 1 : 0) << n;
        EXPECT_EQ(FlashTest::words(), words) << n;
        EXPECT_LE(bus().exchanges(1) - before, n + 6) << "nothing is sent behind a failure";
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
}

TEST_F(FlashOfAReader, IsToldInBothRecordsWhenALineIsRefused) {
    struct Row {
        char status;
        Words words;
    };
    for (const Row& row : std::initializer_list<Row>{{'R', {0x90400000, 0x90600000}},
                                                     {'x', {0x90400000, 0x90700000}},
                                                     {'T', {0x90400000, 0x90700000}}}) {
        _APIinit();
        forget();
        const auto readers = connectTwo();
        zel::sim::TagBootOptions& options = readers[1]->bootLoader().options();
        if (row.status == 'T')
            options.lineBusy = 3;
        options.reply[2] = {0, static_cast<std::uint8_t>(row.status)};
        EXPECT_EQ(Bootload(fileOf(3)), 0);
        EXPECT_EQ(words(), row.words) << row.status;
        USBDisconnect();
        bus().clear();
        bus().startTrace();
        cbIndex = 0;
    }
}

TEST_F(FlashOfAReader, ThatRefusesToStartIsToldInBothRecords) {
    const auto readers = connectTwo();
    readers[1]->bootLoader().options().entryBusy = 61;
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_EQ(words(), (Words{0x90300000, 0x90100000}));
    EXPECT_EQ(takeProgress(), 0);
}

TEST_F(FlashOfAReader, HasTheLaterWordWhenBothRecordsAreOne) {
    const auto reader = connectKind(TagBootKind::Slow);
    reader->bootLoader().options().reply[1] = {0, 'R'};
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_EQ(DevDat[0].lLastErr, 0x90600000);
    reader->bootLoader().options().reply[0] = {0, 'R'};
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_EQ(DevDat[0].lLastErr, 0x90100000);
}

TEST_F(FlashOfAReader, GoesOnBehindALineThatIsTakenWithAnE) {
    const auto reader = connectKind(TagBootKind::Slow);
    reader->bootLoader().options().reply[1] = {0, 'E'};
    EXPECT_EQ(Bootload(fileOf(2)), 1);
    EXPECT_EQ(reader->bootLoader().lines(), 2);
}

TEST_F(FlashOfAReader, WorksAgainBehindALossOfPower) {
    const auto reader = connectKind(TagBootKind::Slow);
    reader->bootLoader().options().powerCutAfter = 2;
    EXPECT_EQ(Bootload(fileOf(4)), 0);
    EXPECT_EQ(reader->bootLoader().lines(), 2);
    reader->bootLoader().options().powerCutAfter = 0;
    reader->bootLoader().options().lines = 4;
    USBDisconnect();
    bus().replug(0);
    cbIndex = 0;
    EXPECT_EQ(connect(), 1);
    EXPECT_TRUE(reader->bootLoader().isRunning());
    EXPECT_EQ(Bootload(fileOf(4)), 1);
    EXPECT_EQ(reader->bootLoader().lines(), 4);
    EXPECT_FALSE(reader->bootLoader().isRunning()) << "the new firmware runs";
}

TEST_F(FlashOfAReader, IsRefusedWithoutAFile) {
    const auto reader = connectReader();
    for (const char* name : {static_cast<const char*>(nullptr), "absent.hex", ""}) {
        SCOPED_TRACE(name);
        DevDat[0].lLastErr = 0;
        EXPECT_EQ(Bootload(name), 0);
        EXPECT_EQ(DevDat[0].lLastErr, 0x90800000);
    }
    EXPECT_EQ(bus().takeTrace(), "");
    EXPECT_EQ(takeProgress(), 0);
}

TEST_F(FlashOfAReader, TellsAMissingFileInTheActiveRecord) {
    const auto readers = connectTwo();
    EXPECT_EQ(Bootload("absent.hex"), 0);
    EXPECT_EQ(words(), (Words{0, 0x90800000}));
}

TEST_F(FlashOfAReader, NeedsAProximityReaderOnUsb) {
    struct Row {
        std::uint32_t product;
        std::uint16_t type;
    };
    for (const Row& row :
         std::initializer_list<Row>{{1, 1}, {1, 2}, {2, 0}, {4, 0}, {0, 0}, {8, 0}}) {
        _APIinit();
        iDevsFnd = 2;
        iActDev = 1;
        DevDat[1].iProduct = row.product;
        DevDat[1].iDevType = row.type;
        EXPECT_EQ(Bootload("absent.hex"), 0);
        EXPECT_EQ(words(), (Words{0, 0x90500000})) << row.product << ' ' << row.type;
    }
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(FlashOfAReader, SaysNothingWithoutAnActiveDevice) {
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    connectReader();
    iActDev = 1;
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    iActDev = -1;
    EXPECT_EQ(Bootload(fileOf(1)), 0);
    EXPECT_EQ(words(), Words{});
    EXPECT_EQ(bus().takeTrace(), "");
}
