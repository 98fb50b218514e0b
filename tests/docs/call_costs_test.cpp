// SPDX-License-Identifier: MIT
// The guide's table of what calls cost: each row is the call made on the simulated reader.
#include "tests/support/library_test.h"

#include <fstream>
#include <functional>
#include <iterator>

using namespace zel::test;

namespace {

struct PricedCall {
    const char* name; // as the guide has it
    std::function<void()> make;
    bool isFast = true; // the kind of reader that tells its beeper's volume, and writes fast
};

void writeOneWord() {
    setIDBitCnts_iIDBitCnt(20);
    WriteCfg();
}

void lightTheLed() {
    sLEDCtrl leds = {};
    GetLEDCtrl(&leds);
    leds.bAppCtrlsLED = leds.bVolatile = 1;
    SetLEDCtrl(&leds);
}

void readIdentifier() {
    unsigned char identifier[32];
    GetActiveID(identifier, 8);
}

void readLongIdentifier() {
    unsigned char identifier[32];
    GetActiveID32(identifier, 32);
}

void connectAnew() {
    USBDisconnect();
    SetDevTypeSrch(0);
    USBConnect(nullptr);
}

const PricedCall kCalls[] = {
    {"`USBConnect`, one reader", connectAnew},
    {"`GetActiveID`", readIdentifier},
    {"`GetActiveID32`", readLongIdentifier},
    {"`GetQueuedID`", [] { GetQueuedID(0, 0); }},
    {"`getActiveCardData`", [] { getActiveCardData(); }},
    {"`Ping`", [] { Ping(); }},
    {"`BeepNow`", [] { BeepNow(1, 0); }},
    {"`SetLEDCtrl` with `bVolatile`", lightTheLed},
    {"`getPartNumberString`", [] { getPartNumberString(); }},
    {"`GetFullFWVersion`", [] { GetFullFWVersion(); }},
    {"`getESN`", [] { getESN(); }},
    {"`ReadCfg`", [] { ReadCfg(); }},
    {"`WriteCfg`, one word changed, fast reader", writeOneWord},
    {"`WriteCfg`, one word changed, slow reader", writeOneWord, false},
    {"`ResetFactoryDflts`", [] { ResetFactoryDflts(); }},
    {"a get or set of a record or word", [] { setIDBitCnts_iIDBitCnt(20); }},
};

class CallCosts : public LibraryTest {
protected:
    // "| CALL | REPORTS | PAUSE |", a line of the table.
    static std::string rowOf(const PricedCall& call) {
        zel::sim::TagOptions options;
        if (call.isFast)
            options.volume = std::uint8_t{2};
        const auto reader = connectReader(options);
        USBDisconnect();
        connectAnew();
        const int before = bus().exchanges(0);
        takePausedMicroseconds();
        call.make();
        const auto pause = takePausedMicroseconds() / 1000;
        return std::string("| ") + call.name + " | " + std::to_string(bus().exchanges(0) - before) +
               " | " + (pause == 0 ? "none" : std::to_string(pause) + " ms") + " |\n";
    }
};

std::string guide() {
    std::ifstream file(ZEL_GUIDE);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

class EachCallCosts : public CallCosts, public ::testing::WithParamInterface<PricedCall> {};

TEST_P(EachCallCosts, WhatTheGuideTells) {
    const std::string row = rowOf(GetParam());
    EXPECT_NE(guide().find(row), std::string::npos) << "the guide lacks this row:\n" << row;
}

INSTANTIATE_TEST_SUITE_P(Guide, EachCallCosts, ::testing::ValuesIn(kCalls),
                         [](const auto& test) { return "Row" + std::to_string(test.index); });
