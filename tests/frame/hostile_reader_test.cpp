// SPDX-License-Identifier: MIT
// Whatever a reader answers, the library stays inside its records.
#include "tests/support/library_test.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstring>
#include <random>

using namespace zel::test;

namespace {

using Random = std::mt19937;

// What a reader answers, from noise to replies that are right but for one byte.
enum class Manner { Noise, AllOnes, Counts, Echo };
constexpr Manner kManners[] = {Manner::Noise, Manner::AllOnes, Manner::Counts, Manner::Echo,
                               Manner::Echo};

class HostileReader : public zel::sim::Device {
public:
    HostileReader(Random& random, long& exchanges) : random_(random), exchanges_(exchanges) {}

    bool take(std::uint8_t, std::span<const std::uint8_t> payload) override {
        ++exchanges_;
        if (random_() % 500 == 0)
            changeManner();
        std::copy(payload.begin(), payload.end(), command_.begin());
        return random_() % oneFails_ != 0;
    }

    bool answer(std::uint8_t, std::span<std::uint8_t> reply) override {
        ++exchanges_;
        for (std::uint8_t& byte : reply)
            byte = manner_ == Manner::AllOnes ? 0xFF : static_cast<std::uint8_t>(random_());
        if (manner_ == Manner::Echo || manner_ == Manner::Counts)
            std::copy_n(command_.begin(), manner_ == Manner::Echo ? 4 : 1, reply.begin());
        if (manner_ == Manner::Counts || random_() % 4 == 0)
            reply[3] = static_cast<std::uint8_t>(random_() % 14);
        return random_() % oneFails_ != 0;
    }

    std::string nameOf(std::span<const std::uint8_t>) const override { return ""; }

private:
    void changeManner() {
        constexpr unsigned kRates[] = {4, 20, 100, 1000};
        manner_ = kManners[random_() % std::size(kManners)];
        oneFails_ = kRates[random_() % std::size(kRates)];
    }

    Random& random_;
    long& exchanges_;
    unsigned oneFails_ = 100; // of so many transfers
    Manner manner_ = Manner::Echo;
    std::array<std::uint8_t, 8> command_ = {};
};

class HostileReaders : public LibraryTest {
protected:
    static constexpr int kReaders = 3;

    void start(std::uint32_t seed) {
        random_.seed(seed);
        USBDisconnect();
        traceNothing();
        for (int i = 0; i < kReaders; ++i)
            bus().plug(std::make_shared<HostileReader>(random_, exchanges_),
                       {0x5A3E, static_cast<std::uint16_t>(0x9D21 + i), "r" + std::to_string(i)});
    }

    short anyShort() { return static_cast<short>(random_()); }
    unsigned char anyByte() { return static_cast<unsigned char>(random_()); }

    // What an application may leave in a configuration, marks included.
    void scribble() {
        tsTagCfg& config = DevDat[random_() % kReaders].Cfg[random_() % ZELTAGAPI_MAX_CONFIGS];
        auto* const bytes = reinterpret_cast<unsigned char*>(&config);
        std::generate(bytes, bytes + sizeof config, [this] { return anyByte(); });
        DevDat[random_() % kReaders].bLUIDDirty = 1;
    }

    void select() {
        SetActDev(static_cast<short>(random_() % (kReaders + 1)));
        SetActConfig(anyShort());
        SetActConfig(static_cast<short>(random_() % ZELTAGAPI_MAX_CONFIGS));
        SetCardTypePriority(static_cast<unsigned short>(random_()), anyShort());
        IsCardTypeInList(static_cast<unsigned short>(random_()));
        GetCardType();
    }

    void serve() {
        unsigned char data[512] = {};
        BeepNow(anyByte(), anyShort());
        SetBeeperVolume(anyByte());
        GetBeeperVolume();
        SetBTLEConfiguration(anyByte());
        GetBTLEConfiguration();
        IsBTLEPresent();
        GetFirmwareVersion(anyShort(), anyShort());
        getPartNumberString_char(anyShort());
        getESN();
        WriteSEKeyRefrence(data, static_cast<int>(random_() % 600) - 40, anyByte());
        WriteEV1FileRefrence(data, static_cast<int>(random_() % 600) - 40);
        Ping();
    }

    void setRecords() {
        sLEDCtrl led = {};
        led.bVolatile = anyShort();
        SetLEDCtrl(&led);
        sIDDispParms2 leads = {};
        leads.iLeadChrCnt = anyShort();
        SetIDDispParms2(&leads);
        uSFD fields = {};
        fields.bytes[0] = fields.bytes[3] = anyByte();
        SetSepFldData(&fields, 128);
    }

    void readCard() {
        unsigned char buffer[ZELTAGAPI_ID_SIZE];
        GetActiveID(buffer, 8);
        GetActiveID32(buffer, 32);
        GetQueuedID(anyShort(), anyShort());
        GetQueuedID_index(anyShort());
        getActiveCardData();
        getActiveCardData_byte(anyShort());
        SetRawPayload_index(anyShort(), anyShort());
        GetRawPayload_index(anyShort());
    }

    void moveSets() {
        ResetUserDflts();
        SaveUserDflts();
        zelTagPlusDefaults();
        ResetFactoryDflts();
    }

    void act() {
        switch (random_() % 9) {
        case 0:
            USBConnect(nullptr);
            break;
        case 1:
            ReadCfg();
            break;
        case 2:
        case 3:
            scribble();
            WriteCfg();
            break;
        case 4:
            serve();
            break;
        case 5:
            setRecords();
            break;
        case 6:
            readCard();
            break;
        case 7:
            moveSets();
            break;
        default:
            select();
        }
    }

    template <std::size_t Size> static bool isEnded(const char (&text)[Size]) {
        return strnlen(text, Size) < Size;
    }

    static bool isWhole(const tsDevDat& record) {
        return record.iActConfig < ZELTAGAPI_MAX_CONFIGS &&
               record.iMaxConfig < ZELTAGAPI_MAX_CONFIGS && record.iTagPlusState <= 2 &&
               isEnded(record.szDevName) && isEnded(record.szPartNum) && isEnded(record.szFWFile) &&
               isEnded(record.szFullFWVer) && record.pPort == nullptr;
    }

    // The records behind the readers in use are as the library made them.
    static bool areUntouched(const tsDevDat& from, const std::vector<unsigned char>& before) {
        return std::memcmp(&from, before.data(), before.size()) == 0;
    }

    Random random_;
    long exchanges_ = 0;
    TemporaryFolder folder_;
};

} // namespace

TEST_F(HostileReaders, LeaveTheTableWhole) {
    constexpr std::uint32_t kSeeds = 16;
    constexpr long kExchangesASeed = 10'000;
    for (std::uint32_t seed = 1; seed <= kSeeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        start(seed);
        USBConnect(nullptr);
        const auto* const behind = reinterpret_cast<const unsigned char*>(&DevDat[kReaders]);
        const std::vector<unsigned char> before(
            behind, behind + (ZELTAGAPI_MAX_DEVICES - kReaders) * sizeof(tsDevDat));
        for (int step = 1; exchanges_ < seed * kExchangesASeed; ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            act();
            ASSERT_TRUE(GetDevCnt() >= 0 && GetDevCnt() <= kReaders) << GetDevCnt();
            ASSERT_TRUE(GetActDev() >= 0 && GetActDev() < kReaders) << GetActDev();
            for (int index = 0; index < kReaders; ++index)
                ASSERT_TRUE(isWhole(DevDat[index])) << index;
            ASSERT_LE(activeIDBufSz, ZELTAGAPI_ID_SIZE);
        }
        EXPECT_TRUE(areUntouched(DevDat[kReaders], before));
    }
    EXPECT_GE(exchanges_, 100'000);
}

// Not all is noise: the readers get far enough to be taken for TagPlus ones, and to be written.
TEST_F(HostileReaders, AreTakenForEveryKind) {
    bool states[3] = {};
    int highest = 0;
    int connects = 0;
    int writes = 0;
    for (std::uint32_t seed = 1; seed <= 40; ++seed) {
        start(seed);
        connects += USBConnect(nullptr);
        SetActDev(1);
        writes += WriteCfg();
        for (int index = 0; index < GetDevCnt(); ++index) {
            states[DevDat[index].iTagPlusState] = true;
            highest = std::max<int>(highest, DevDat[index].iMaxConfig);
        }
    }
    EXPECT_TRUE(states[0]);
    EXPECT_TRUE(states[2]);
    EXPECT_EQ(highest, 10);
    EXPECT_GT(connects, 0);
    EXPECT_GT(writes, 0);
}
