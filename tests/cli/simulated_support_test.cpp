// SPDX-License-Identifier: MIT
// Queue, card data, raw reports and the dump of the simulated reader, as a new user tries them.
#include "tests/cli/run_program.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

TEST(SimulatedSupport, LongReadShowsAll32Bytes) {
    EXPECT_EQ(
        runZeltag({"read", "--long", "--sim"}),
        (Ended{0, "card   26 bits  0x" + std::string(56, '0') + "02341B70  sim:zeltag-0\n", ""}));
}

// Facility code 77 and number 1001; both parity bits are 0.
TEST(SimulatedSupport, AnIdentifierIsQueued) {
    EXPECT_EQ(runZeltag({"read", "--queued", "--sim"}), (Ended{0,
                                                               "name     sim:zeltag-0\n"
                                                               "id       0x9A07D2\n"
                                                               "age      42\n"
                                                               "word 32  26\n"
                                                               "byte 34  1\n"
                                                               "byte 35  3\n",
                                                               ""}));
}

TEST(SimulatedSupport, CardHoldsAText) {
    EXPECT_EQ(runZeltag({"read", "--card-data", "--sim"}),
              (Ended{0,
                     " 0  43 61 72 64 20 32 36 2D  Card 26-\n"
                     " 8  33 35 31 32 2C 20 73 74  3512, st\n"
                     "16  61 66 66 2C 20 67 72 6F  aff, gro\n"
                     "24  75 6E 64 20 66 6C 6F 6F  und floo\n"
                     "32  72 00 00 00 00 00 00 00  r.......\n",
                     ""}));
}

TEST(SimulatedSupport, RawReportIsAnswered) {
    EXPECT_EQ(runZeltag({"raw", "0x8A", "--sim"}), (Ended{0,
                                                          "sent   8A 00 00 00 00 00 00 00\n"
                                                          "reply  07 00 42 01 00 00 00 00\n",
                                                          ""}));
}

TEST(SimulatedSupport, ReportsAreDumpedToAFile) {
    const TemporaryFolder folder;
    const std::string file = folder.path() / "reader.txt";
    EXPECT_EQ(runZeltag({"dump", file, "--sim", "--progress"}),
              (Ended{0, file + "  15 reports of sim:zeltag-0\n",
                     "zeltag: reading the configuration of each reader\n"
                     "zeltag: 15 of 15 reports\n"}));
    EXPECT_TRUE(std::filesystem::is_regular_file(file));
}

} // namespace

} // namespace zel::test
