// SPDX-License-Identifier: MIT
// What every hidraw test starts from and ends with.
#pragma once

#include "tests/hidraw/mock_bed.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zel::test {

using Names = std::vector<std::string>;

// Starts with an empty bed; closes all devices afterwards and wants nothing of the bed left open.
class HidrawTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // What is open of the bed: nodes, after a scan nothing else.
    Names openNodes() const;

    MockBed bed;
};

// Scans as an application does. The names in the device table afterwards.
Names connect();

// Closes all devices; the next scan fills the table from its first record again.
void disconnect();

// Says why nothing can be tested and ends the program as skipped.
[[noreturn]] void skipProgram(const char* why);

} // namespace zel::test
