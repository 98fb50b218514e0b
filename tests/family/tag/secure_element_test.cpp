// SPDX-License-Identifier: MIT
// Key and file references go to the reader's secure element, four bytes a page.
#include "tests/family/tag/config_test.h"

#include <array>
#include <vector>

using namespace zel::test;
using zel::sim::TagReference;
using Block = zel::sim::TagReader::Block;

namespace {

class Reference : public ConfigTest {
protected:
    unsigned char data_[513] = {1, 2, 3, 4, 5, 6, 7, 8};
};

const std::string kSelect = "> 89 81 00 00 00 00 00 00  multi: select 0\n"
                            "< 89 81 00 00 00 00 00 00\n";
const std::string kEnd = "> 89 90 00 FF 00 00 00 00  multi: reference end\n"
                         "< 89 90 00 FF 00 00 00 00\n"
                         "> 90 00 00 00 00 00 00 00  commit\n";

} // namespace

TEST_F(Reference, OfAKeyOfFiveBytesIsTwoPages) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    record().lLastErr = 0x55;
    EXPECT_EQ(WriteSEKeyRefrence(data_, 5, 7), 1);
    EXPECT_EQ(bus().takeTrace(), kSelect +
                                     "> 89 90 00 00 01 07 05 00  multi: key reference 7\n"
                                     "< 89 90 00 00 00 00 00 00\n"
                                     "> 89 90 00 01 01 02 03 04  multi: reference page 1\n"
                                     "< 89 90 00 01 00 00 00 00\n"
                                     "> 89 90 00 02 05 00 00 00  multi: reference page 2\n"
                                     "< 89 90 00 02 00 00 00 00\n" +
                                     kEnd);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(reader->references(),
              (std::vector<TagReference>{{1, 7, 5, {1, 2, 3, 4, 5, 0, 0, 0}, true}}));
}

TEST_F(Reference, OfAFileHasTheNumberOne) {
    connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(WriteEV1FileRefrence(data_, 4), 1);
    EXPECT_EQ(bus().takeTrace(), kSelect +
                                     "> 89 90 00 00 02 01 04 00  multi: file reference 1\n"
                                     "< 89 90 00 00 00 00 00 00\n"
                                     "> 89 90 00 01 01 02 03 04  multi: reference page 1\n"
                                     "< 89 90 00 01 00 00 00 00\n" +
                                     kEnd);
}

TEST_F(Reference, PutsTheReaderOnTheLibrarysConfiguration) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    SetActConfig(2);
    WriteSEKeyRefrence(data_, 1, 1);
    EXPECT_EQ(reader->activeConfiguration(), 2U);
    EXPECT_EQ(GetActConfig(), 2);
}

TEST_F(Reference, OfNoBytesIsOpenedAndClosed) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    EXPECT_EQ(WriteSEKeyRefrence(data_, 0, 1), 1);
    EXPECT_EQ(reader->references(), (std::vector<TagReference>{{1, 1, 0, {}, true}}));
}

TEST_F(Reference, OfTheMostBytesIs128Pages) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    data_[511] = 0xEE;
    EXPECT_EQ(WriteSEKeyRefrence(data_, 512, 1), 1);
    ASSERT_EQ(reader->references().size(), 1U);
    EXPECT_EQ(reader->references()[0].data, std::vector<std::uint8_t>(data_, data_ + 512));
}

TEST_F(Reference, OfMoreOrLessThanItHoldsIsRefusedAndNothingIsSent) {
    connectPlus({.tagPlusConfigurations = 3});
    for (const int length : {513, 1 << 30, -1}) {
        record().lLastErr = 0x55;
        EXPECT_EQ(WriteSEKeyRefrence(data_, length, 1), 0) << length;
        EXPECT_EQ(GetLastLibErr(), 0x80000000) << length;
        EXPECT_EQ(WriteEV1FileRefrence(data_, length), 0) << length;
        EXPECT_EQ(GetLastLibErr(), 0x80000000) << length;
    }
    EXPECT_EQ(WriteSEKeyRefrence(nullptr, 4, 1), 0);
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Reference, ThatCannotBeOpenedTellsOnlyAReplyThatDoesNotCome) {
    const auto reader = connectPlus({.tagPlusConfigurations = 3});
    failFor(3);
    EXPECT_EQ(WriteSEKeyRefrence(data_, 4, 1), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    bus().failExchange(0, 4);
    EXPECT_EQ(WriteSEKeyRefrence(data_, 4, 1), 0);
    EXPECT_EQ(GetLastLibErr(), 0x80000000);
    reader->replyWith({0x89, 0x90, 0, 0}, {0x89, 0x90, 0, 1});
    EXPECT_EQ(WriteSEKeyRefrence(data_, 4, 1), 0);
    EXPECT_EQ(GetLastLibErr(), 0);
    EXPECT_EQ(bus().takeTrace().find("reference page"), std::string::npos);
}

TEST_F(Reference, ThatFailsInAPageOrAtItsEndTellsSo) {
    connectPlus({.tagPlusConfigurations = 3});
    // Select, open, two pages, end: a send and a reply each; then the commit.
    for (int exchange = 5; exchange <= 11; ++exchange) {
        record().lLastErr = 0;
        failFor(exchange);
        EXPECT_EQ(WriteSEKeyRefrence(data_, 5, 1), 0) << exchange;
        EXPECT_EQ(GetLastLibErr(), 0x80000000) << exchange;
        bus().failExchange(0, 1, 0);
    }
}

TEST_F(Reference, NeedsAnEchoOfEachPageAndOfTheEnd) {
    for (const std::uint8_t page : std::vector<std::uint8_t>{0x01, 0x02, 0xFF}) {
        SCOPED_TRACE(int{page});
        unplugAll();
        const auto reader = connectPlus({.tagPlusConfigurations = 3});
        reader->replyWith({0x89, 0x90, 0, page}, {0x89, 0x90, 1, page});
        EXPECT_EQ(WriteSEKeyRefrence(data_, 5, 1), 0);
        EXPECT_EQ(GetLastLibErr(), 0x80000000);
    }
}

TEST_F(Reference, IsNothingWithoutADevice) {
    EXPECT_EQ(WriteSEKeyRefrence(data_, 4, 1), 0);
    EXPECT_EQ(WriteEV1FileRefrence(data_, 4), 0);
}

TEST_F(Reference, TestsForADeviceAndNotForItsProduct) {
    connectPlus({.tagPlusConfigurations = 3});
    record().iProduct = 2;
    EXPECT_EQ(WriteSEKeyRefrence(data_, 4, 1), 1);
    EXPECT_EQ(WriteEV1FileRefrence(data_, 4), 1);
}
