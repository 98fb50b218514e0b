// SPDX-License-Identifier: MIT
// A stream that answers anything: no operation writes beyond what is its own.
#include "family/tag/card_types.h"
#include "family/tag/multi_config.h"
#include "family/tag/services.h"
#include "frame/zelTagAPI.h"
#include "tests/family/tag/ascii_script.h"

#include <array>
#include <functional>
#include <iterator>
#include <random>

using namespace zel::test;

namespace {

constexpr int kRounds = 3000;
constexpr unsigned kSeed = 20'111;

// Random bytes and pieces of what is waited for, in answers of any length.
class Noise : public zel::sim::StreamDevice {
public:
    explicit Noise(std::mt19937& random) : random_(random) {}

    std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
        std::vector<std::uint8_t> answer;
        if (isLikely(3))
            answer.push_back(bytes.size() > 4 ? bytes[1] : bytes[0]);
        if (isLikely(2))
            append(answer, pieces()[random_() % pieces().size()]);
        const std::size_t size = isLikely(20) ? random_() % 40 : random_() % 3000;
        while (answer.size() < size)
            answer.push_back(static_cast<std::uint8_t>(random_()));
        if (isLikely(2))
            append(answer, std::string("\x90\x00", 2));
        return answer;
    }

private:
    bool isLikely(unsigned oneIn) { return random_() % oneIn != 0; }

    static const std::vector<std::string>& pieces() {
        static const std::vector<std::string> all = {
            "Norvanex>",
            "{1.2.3}",
            "{FFFFFFFFFFFFFFFFFF,99999999999,0,26;FFFFFFFFFFFFFFFFFFFF}",
            "{0,0,0,99999;",
            ":wieg.id.bits=99999999999999999999\r",
            ":chr.count.lead=-2147483648\r",
            ":chr.count.trail=32767\r",
            ":chr.1='\\x",
            ":chr.fac='\r",
            ":out.led=0x\r",
            std::string("\x90\x00", 2),
            std::string("\x6A\x82", 2)};
        return all;
    }

    static void append(std::vector<std::uint8_t>& bytes, const std::string& text) {
        bytes.insert(bytes.end(), text.begin(), text.end());
    }

    std::mt19937& random_;
};

class HostileStream : public StreamTest {
protected:
    HostileStream() {
        connectLine(std::make_shared<Noise>(random_));
        onPause([](std::uint64_t) { lines().pump(); });
    }

    // Anything that an application or an earlier reader may have left.
    void disturb() {
        record().iTagPlusState = below(3);
        record().bSepFldOK = below(2);
        record().bPartNumOK = below(2);
        record().iMaxConfig = static_cast<std::uint16_t>(below(3));
        record().iActConfig = static_cast<std::uint8_t>(below(11));
        useACPMode = below(8) == 0 ? 1 : 0;
        tsTagCfg& some = config(record().iActConfig);
        some.sTimeParms.ExFeatures01 = static_cast<std::int16_t>(random_());
        some.sIDDispParms2.iLeadChrCnt = static_cast<std::int16_t>(random_());
        some.sIDDispParms3.iTrailChrCnt = static_cast<std::int16_t>(random_());
        some.uSFD.bytes[0] = static_cast<std::uint8_t>(random_());
        some.uSFD.bytes[3] = static_cast<std::uint8_t>(random_());
        some.bDirtySepFld = some.bDirtyIDFrmt1 = some.bDirtyIDFrmt2 = below(2);
    }

    unsigned below(unsigned bound) { return static_cast<unsigned>(random_() % bound); }

    std::mt19937 random_{kSeed};
};

void readIds() {
    std::array<unsigned char, 32> id = {};
    GetActiveID(id.data(), 8);
    GetActiveID32(id.data(), 32);
}

void setLeds() {
    sLEDCtrl leds = {};
    leds.bVolatile = 1;
    SetLEDCtrl(&leds);
}

void moveBlocks() {
    SaveUserDflts();
    zelTagPlusDefaults();
}

void askVersions() {
    for (short unit = 0; unit < 4; ++unit)
        zeltag_SendGetFirmwareVersion(unit, unit);
}

const std::function<void()> kOperations[] = {
    readIds,
    setLeds,
    moveBlocks,
    askVersions,
    [] { ReadCfg(); },
    [] { WriteCfg(); },
    [] { ResetFactoryDflts(); },
    [] { GetQueuedID(1, 1); },
    [] { getActiveCardData(); },
    [] { SetRawPayload(0xFA, 0x0C, 1, 2, 3, 4, 5, 6); },
    [] { BeepNow(1, 0); },
    [] { SetBeeperVolume(static_cast<unsigned char>(GetBeeperVolume())); },
    [] { WriteBaudRate(static_cast<unsigned char>(ReadBaudRate())); },
    [] { zeltag_getPartNumberString(); },
    [] { zeltag_GetCardTypeListFromDevice(); },
    [] { SendGetTagPlus(); },
    [] { SendSetTagPlus(); },
    [] { zeltag_SendSelectActConfig(3); },
    [] { Ping(); },
    [] { AcpReadCfg(); },
};

} // namespace

TEST_F(HostileStream, LeavesTheTableWithinItsBounds) {
    bus().takeTrace();
    for (int round = 0; round < kRounds; ++round) {
        disturb();
        kOperations[below(std::size(kOperations))]();
        ASSERT_LE(record().iMaxConfig, 10) << round;
        ASSERT_LE(record().iActConfig, 10) << round;
        ASSERT_EQ(iDevsFnd, 1) << round;
        bus().takeTrace();
    }
    EXPECT_EQ(DevDat[1].iProduct, 0U) << "the next record is as it was";
}
