// SPDX-License-Identifier: MIT
// The queued identifier, which is the active field too, and its age.
#include "frame/zelTagAPI.h"
#include "tests/family/band/band_device.h"

using namespace zel::test;

namespace {

constexpr int kUnsupported = -7;

class BandQueue : public BandLineTest {};

} // namespace

TEST_F(BandQueue, TakesTheActiveFieldWhateverIsAskedFor) {
    swipeNumbers();
    settings().iActLength = 0;
    DevDat[0].lLastErr = 7;
    EXPECT_EQ(GetQueuedID(3, -5), 32);
    std::string text;
    for (short index = 0; index < 32; ++index)
        text += static_cast<char>(zelband_GetQueuedID_index(index));
    EXPECT_EQ(text, filledUp("=567", 32));
    EXPECT_EQ(settings().iActLength, 32);
    EXPECT_EQ(error(), 0);
    EXPECT_EQ(sent(), "G20 G21 CD0 ");
}

TEST_F(BandQueue, TellsItsAgeAndAByteBehindIt) {
    reader->replyWith("GQ0", "RQ0x34125A77");
    EXPECT_EQ(zelband_GetQueuedAge(0), 0x1234);
    EXPECT_EQ(told(), traced("GQ0", "RQ0x34125A77"));
    EXPECT_EQ(zelband_GetQueuedAge(1), 0x5A);
    EXPECT_EQ(zelband_GetQueuedAge(2), 0);
    EXPECT_EQ(zelband_GetQueuedID_index(33), 0x1234);
    EXPECT_EQ(zelband_GetQueuedID_index(34), 0x5A);
    for (const int index : {-1, 32, 35, 36, 256})
        EXPECT_EQ(zelband_GetQueuedID_index(static_cast<short>(index)), 0) << index;
    EXPECT_EQ(told(), "");
}

TEST_F(BandQueue, HasNoAgeWithoutAnAnswer) {
    reader->replyWith("GQ0", "RQ0x34125A77");
    zelband_GetQueuedAge(0);
    failAt(0);
    EXPECT_EQ(zelband_GetQueuedAge(0), 0);
    EXPECT_EQ(zelband_GetQueuedAge(1), 0);
}

TEST_F(BandQueue, TellsItsFirstByteAtEachExportedPlace) {
    swipeNumbers();
    GetQueuedID(0, 0);
    told();
    for (short index = 0; index < 32; ++index)
        EXPECT_EQ(GetQueuedID_index(index), '=') << index;
    EXPECT_EQ(told(), "");
}

TEST_F(BandQueue, IsAskedAtTheExportedPlacesBehind) {
    SetUnsupportedProductErrorCode(kUnsupported);
    reader->replyWith("GQ0", "RQ0x34125A77");
    EXPECT_EQ(GetQueuedID_index(32), 0x1234);
    EXPECT_EQ(sent(), "GQ0 ");
    EXPECT_EQ(GetQueuedID_index(33), 0x5A);
    for (const int index : {-1, 34, 35})
        EXPECT_EQ(GetQueuedID_index(static_cast<short>(index)), kUnsupported) << index;
    EXPECT_EQ(sent(), "");
    SetUnsupportedProductErrorCode(0);
}
