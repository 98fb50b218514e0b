// SPDX-License-Identifier: MIT
// What the user is told of a reader that can't be opened.
#include "cli/device/diagnosis.h"

#include <fstream>
#include <gtest/gtest.h>

namespace zel::cli {

namespace {

using Readers = std::vector<SystemReader>;

constexpr char kRule[] = "install the package zeltag-udev, or put the line "
                         R"(SUBSYSTEM=="hidraw", ATTRS{idVendor}=="5a3e", )"
                         R"(ATTRS{idProduct}=="9d23", TAG+="uaccess" into )"
                         "/etc/udev/rules.d/70-zeltag.rules, then unplug it and plug it in again";

std::string told(const Readers& readers) {
    const Failure failure = explainNoReader(readers);
    return std::string(codeName(failure.exit)) + ": " + asLine(failure);
}

TEST(Diagnosis, NothingListedMeansNoReader) {
    EXPECT_EQ(told({}),
              "no_device: no reader found; plug one in, or add --sim to try a simulated one");
}

TEST(Diagnosis, DeniedReaderNamesTheNodeAndTheRuleThatHelps) {
    EXPECT_EQ(told({{"/dev/hidraw3", Access::Denied}}),
              std::string("no_permission: no permission to open the reader /dev/hidraw3; ") +
                  kRule);
}

TEST(Diagnosis, RuleThatHelpsIsALineOfThePackagedRules) {
    std::ifstream file(ZEL_UDEV_RULES);
    std::string line;
    while (std::getline(file, line))
        if (line == udevLine(usualReaderId()))
            break;
    EXPECT_EQ(line, udevLine(usualReaderId()));
    EXPECT_NE(std::string(kRule).find("put the line " + line + " into "), std::string::npos);
}

TEST(Diagnosis, MissingNodeIsNamed) {
    EXPECT_EQ(told({{"/dev/hidraw3", Access::NoNode}}),
              "no_device: the system lists a reader, but its device node /dev/hidraw3 is missing; "
              "unplug it and plug it in again, or pass the node into the container");
}

TEST(Diagnosis, OtherwiseTheReaderCannotBeOpened) {
    const std::string expected = "no_device: the reader /dev/hidraw3 can't be opened; "
                                 "unplug it and plug it in again";
    EXPECT_EQ(told({{"/dev/hidraw3", Access::Refused}}), expected);
    EXPECT_EQ(told({{"/dev/hidraw3", Access::Open}}), expected);
}

TEST(Diagnosis, FirstBlockedReaderIsTheReason) {
    EXPECT_EQ(explainNoReader({{"/dev/hidraw0", Access::Open},
                               {"/dev/hidraw1", Access::NoNode},
                               {"/dev/hidraw2", Access::Denied}})
                  .device,
              "/dev/hidraw1");
}

TEST(Diagnosis, OnlyBlockedReadersAreWarnedAbout) {
    EXPECT_EQ(warningsAbout({{"/dev/hidraw0", Access::Open}, {"/dev/hidraw1", Access::Denied}}),
              std::vector{std::string("warning: no permission to open the reader /dev/hidraw1; ") +
                          kRule});
}

} // namespace

} // namespace zel::cli
