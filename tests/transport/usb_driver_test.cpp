// SPDX-License-Identifier: MIT
// Matching, retries and the backend's life, above any platform.
#include "transport/usb_driver.h"

#include "tests/support/library_test.h"

#include <array>
#include <vector>

using namespace zel::test;

namespace {

class Enumeration : public LibraryTest {
protected:
    Enumeration() { found_.clear(); }

    struct Found {
        std::string name;
        int row;
        bool operator==(const Found&) const = default;
    };
    static inline std::vector<Found> found_;

    static void take(char* name, void* handle, int row) {
        found_.push_back({name, row});
        UsbDriver_Close(handle);
    }

    static int enumerate(unsigned vendor = 0x5A3E, unsigned product = 0x9D23) {
        return UsbDriver_Generator(vendor, product, take);
    }
};

// A backend of bare counters, for what the simulated bus doesn't show.
struct Counters {
    int starts = 0, stops = 0, sends = 0, gets = 0, lists = 0, unlists = 0, closes = 0;
    int startResult = 1, getResult = 1, sendsThatFail = 0;
    int devices = 1;
    void* handle = reinterpret_cast<void*>(0x1000);
    std::vector<unsigned char> sent;
    unsigned char reportId = 0xEE;
    long asked = 0;
    bool fillsName = false;
};
Counters counters;

const UsbBackend kCounting = {
    [] {
        ++counters.starts;
        return counters.startResult;
    },
    [] { ++counters.stops; },
    [] {
        ++counters.lists;
        return counters.devices;
    },
    [](int, unsigned* vendor, unsigned* product) {
        *vendor = 0x5A3E;
        *product = 0x9D23;
    },
    [](int, char* name) {
        if (counters.fillsName)
            std::fill_n(name, 512, 'n');
        return counters.handle;
    },
    [] { ++counters.unlists; },
    [](void*) { ++counters.closes; },
    [](void*, unsigned char reportId, const unsigned char* data, long size) {
        ++counters.sends;
        counters.reportId = reportId;
        counters.sent.assign(data, data + size);
        return counters.sends > counters.sendsThatFail ? 1 : 0;
    },
    [](void*, unsigned char reportId, unsigned char* data, long* size) {
        ++counters.gets;
        counters.reportId = reportId;
        counters.asked = *size;
        data[0] = 0x77;
        return counters.getResult;
    },
};

class Exchange : public LibraryTest {
protected:
    Exchange() {
        counters = {};
        EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 1);
        connect();
    }
    std::array<unsigned char, 9> report_ = {};
};

class Backend : public LibraryTest {
protected:
    Backend() { counters = {}; }
};

} // namespace

TEST_F(Enumeration, HandsOverTheBuiltInIdentityWithRowMinusOne) {
    plugReader("a");
    EXPECT_EQ(enumerate(), 1);
    EXPECT_EQ(found_, (std::vector<Found>{{"a", -1}}));
}

TEST_F(Enumeration, PassesOverOtherDevices) {
    plugReader({0x5A3E, 0x9D24, "other product"});
    plugReader({0x1234, 0x9D23, "other vendor"});
    plugReader({0, 0, "unreadable"});
    EXPECT_EQ(enumerate(), 0);
    EXPECT_TRUE(found_.empty());
    EXPECT_EQ(bus().takeTrace(), "");
}

TEST_F(Enumeration, ForAnotherIdentityFindsNothingThoughItIsAttached) {
    plugReader({0x5A3E, 0x9D2B, "stripe reader"});
    plugReader({0x8E4A, 0x9D2A, "sensor"});
    plugReader("reader");
    setFilterRow(0, 0x5A3E, 0x9D2B);
    EXPECT_EQ(enumerate(0x5A3E, 0x9D2B), 0);
    EXPECT_EQ(enumerate(0x8E4A, 0x9D2A), 0);
    EXPECT_EQ(enumerate(0x15A3E, 0x9D23), 0);
    EXPECT_TRUE(found_.empty());
}

TEST_F(Enumeration, OfTwoRowsThatMatchHandsOverTheLaterOne) {
    setFilterRow(0, 0x5A3E, 0x9D24);
    setFilterRow(1, 0x7C1F, 0x9D29);
    setFilterRow(2, 0x5A3E, 0x9D24);
    plugReader({0x5A3E, 0x9D24, "twice"});
    EXPECT_EQ(enumerate(), 1);
    EXPECT_EQ(found_, (std::vector<Found>{{"twice", 2}}));
}

TEST_F(Enumeration, OfTheBuiltInIdentityIgnoresItsRow) {
    setFilterRow(0, 0x5A3E, 0x9D23);
    plugReader("direct");
    enumerate();
    EXPECT_EQ(found_, (std::vector<Found>{{"direct", -1}}));
}

TEST_F(Enumeration, NeverMatchesARowWithProductZero) {
    setFilterRow(0, 0x5A3E, 0);
    setFilterRow(1, 0x5A3E, 0x9D24);
    plugReader({0x5A3E, 0, "zero"});
    plugReader({0x5A3E, 0x9D24, "behind"});
    enumerate();
    EXPECT_EQ(found_, (std::vector<Found>{{"behind", 1}}));
}

TEST_F(Enumeration, EndsItsListAtARowWithVendorZero) {
    setFilterRow(0, 0, 0x9D24);
    setFilterRow(1, 0x5A3E, 0x9D24);
    plugReader({0x5A3E, 0x9D24, "hidden"});
    EXPECT_EQ(enumerate(), 0);
}

TEST_F(Enumeration, ReadsAllFiftyOneRowsAndNoMore) {
    for (int row = 0; row < 51; ++row)
        setFilterRow(row, 0x1111, 0x2222);
    plugReader({0x1111, 0x2222, "last"});
    enumerate();
    EXPECT_EQ(found_, (std::vector<Found>{{"last", 50}}));
}

TEST_F(Enumeration, EndsAtTheFirstOpenThatFails) {
    plugReader("a");
    plugReader("b");
    plugReader("c");
    bus().failOpens(1, true);
    EXPECT_EQ(enumerate(), 0);
    EXPECT_EQ(found_, (std::vector<Found>{{"a", -1}})) << "what came before stays";
    EXPECT_EQ(bus().takeTrace(), "open a\nclose a\nopen b fails\n");
}

TEST_F(Enumeration, EndsAtADeviceWithoutAPath) {
    plugReader("");
    plugReader("b");
    EXPECT_EQ(enumerate(), 0);
    EXPECT_EQ(bus().openHandles(), 0);
}

TEST_F(Enumeration, FindsTheDeviceAgainAfterOneThatEnded) {
    plugReader("a");
    bus().failOpens(0, true);
    EXPECT_EQ(enumerate(), 0);
    bus().failOpens(0, false);
    EXPECT_EQ(enumerate(), 1);
}

TEST_F(Exchange, WithReportIdZeroPutsThePayloadOnTheWire) {
    report_ = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(UsbDriver_SendFR(8, 0, report_.data()), 1);
    EXPECT_EQ(counters.sent, (std::vector<unsigned char>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(counters.reportId, 0);
}

TEST_F(Exchange, WithAnotherReportIdPutsTheIdInFront) {
    report_ = {1, 10, 20, 30, 40, 50, 60, 70, 80};
    EXPECT_EQ(UsbDriver_SendFR(8, 0, report_.data()), 1);
    EXPECT_EQ(counters.sent, (std::vector<unsigned char>{1, 10, 20, 30, 40, 50, 60, 70, 80}));
    EXPECT_EQ(counters.reportId, 1);
}

TEST_F(Exchange, FetchesBehindTheReportId) {
    report_[0] = 5;
    EXPECT_EQ(UsbDriver_RecvFR(8, 0, report_.data()), 1);
    EXPECT_EQ(counters.reportId, 5);
    EXPECT_EQ(counters.asked, 8);
    EXPECT_EQ(report_[0], 5);
    EXPECT_EQ(report_[1], 0x77);
}

TEST_F(Exchange, ThatFailsTakesSixSendsAndSixPauses) {
    counters.sendsThatFail = 100;
    EXPECT_EQ(UsbDriver_SendFR(8, 0, report_.data()), 0);
    EXPECT_EQ(counters.sends, 6);
    EXPECT_EQ(bus().takeTrace(), "~ 80 ms\n~ 80 ms\n~ 80 ms\n~ 80 ms\n~ 80 ms\n~ 80 ms\n");
}

TEST_F(Exchange, ThatFailsTakesOneFetchAndNoPause) {
    counters.getResult = 0;
    EXPECT_EQ(UsbDriver_RecvFR(8, 0, report_.data()), 0);
    EXPECT_EQ(counters.gets, 1);
    EXPECT_EQ(takePausedMicroseconds(), 0U);
}

TEST_F(Exchange, EndsItsRetriesWithTheFirstSuccess) {
    counters.sendsThatFail = 2;
    EXPECT_EQ(UsbDriver_SendFR(8, 0, report_.data()), 1);
    EXPECT_EQ(counters.sends, 3);
    EXPECT_EQ(takePausedMicroseconds(), 160'000U);
}

TEST_F(Exchange, UsesTheActiveRecordWhateverDeviceItIsGiven) {
    EXPECT_EQ(UsbDriver_SendFR(8, 99, report_.data()), 1);
    EXPECT_EQ(UsbDriver_RecvFR(8, -3, report_.data()), 1);
}

TEST_F(Exchange, WithoutAHandleFailsAtOnce) {
    void* const handle = DevDat[0].hDev;
    for (void* none : {static_cast<void*>(nullptr), reinterpret_cast<void*>(-1)}) {
        SCOPED_TRACE(none);
        DevDat[0].hDev = none;
        EXPECT_EQ(UsbDriver_SendFR(8, 0, report_.data()), 0);
        EXPECT_EQ(UsbDriver_RecvFR(8, 0, report_.data()), 0);
    }
    EXPECT_EQ(counters.sends + counters.gets, 0);
    EXPECT_EQ(takePausedMicroseconds(), 0U);
    DevDat[0].hDev = handle;
}

TEST_F(Exchange, OfANegativeLengthFailsAtOnce) {
    EXPECT_EQ(UsbDriver_SendFR(-1, 0, report_.data()), 0);
    EXPECT_EQ(UsbDriver_RecvFR(-1, 0, report_.data()), 0);
    EXPECT_EQ(counters.sends + counters.gets, 0);
}

TEST_F(Exchange, CloseOfNoHandleYieldsOneAndTouchesNothing) {
    EXPECT_EQ(UsbDriver_Close(nullptr), 1);
    EXPECT_EQ(UsbDriver_Close(reinterpret_cast<void*>(-1)), 1);
    EXPECT_EQ(counters.closes, 0);
    EXPECT_EQ(UsbDriver_Close(reinterpret_cast<void*>(0x5000)), 1);
    EXPECT_EQ(counters.closes, 1);
}

TEST_F(Exchange, WaitForDataReturnsAtOnceAndLeavesItsBuffer) {
    report_.fill(0x42);
    EXPECT_EQ(UsbDriver_WaitForData(nullptr, 9, report_.data()), 1);
    EXPECT_EQ(report_[8], 0x42);
}

TEST_F(Backend, StartsOnceThoughInitialisedTwice) {
    UsbDriver_UseBackend(&kCounting);
    EXPECT_EQ(UsbDriver_Init(), 1);
    EXPECT_EQ(UsbDriver_Init(), 1);
    EXPECT_EQ(counters.starts, 1);
}

TEST_F(Backend, StopsOnceThoughExitedTwice) {
    UsbDriver_UseBackend(&kCounting);
    UsbDriver_Exit();
    UsbDriver_Exit();
    EXPECT_EQ(counters.stops, 1);
}

TEST_F(Backend, ThatCannotStartFindsNothing) {
    counters.startResult = 0;
    EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 0);
    EXPECT_EQ(UsbDriver_Init(), 0);
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(counters.lists, 0);
}

TEST_F(Backend, IsNotReplacedWhileARecordHoldsAHandle) {
    connectReader();
    EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 0);
    EXPECT_EQ(counters.starts, 0);
    USBDisconnect();
    EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 1);
    EXPECT_EQ(counters.starts, 1);
}

TEST_F(Backend, IsNotReplacedWhileARecordHoldsAHandleOfZero) {
    DevDat[126].hDev = nullptr;
    EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 0);
}

TEST_F(Backend, WithAMemberMissingIsRefused) {
    UsbBackend incomplete = kCounting;
    incomplete.unlist = nullptr;
    EXPECT_EQ(UsbDriver_UseBackend(&incomplete), 0);
    plugReader("still the bus");
    EXPECT_EQ(connect(), 1);
}

TEST_F(Backend, IsCopiedSoThatTheCallersStructMayGo) {
    {
        auto passing = std::make_unique<UsbBackend>(kCounting);
        UsbDriver_UseBackend(passing.get());
    }
    EXPECT_EQ(connect(), 1);
}

TEST_F(Backend, OldOneStopsBeforeTheNextStarts) {
    UsbDriver_UseBackend(&kCounting);
    EXPECT_EQ(UsbDriver_UseBackend(nullptr), 1);
    EXPECT_EQ(counters.stops, 1);
    EXPECT_EQ(UsbDriver_UseBackend(&kCounting), 1);
    EXPECT_EQ(counters.starts, 2);
}

TEST_F(Backend, ListIsDroppedAfterAnEnumeration) {
    UsbDriver_UseBackend(&kCounting);
    connect();
    EXPECT_EQ(counters.unlists, 1);
}

TEST_F(Backend, ListIsLeftAloneAfterAnOpenThatFailed) {
    UsbDriver_UseBackend(&kCounting);
    counters.handle = nullptr;
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(counters.unlists, 0);
}

TEST_F(Enumeration, CutsANameWithoutAnEndAt511Characters) {
    counters = {};
    counters.fillsName = true;
    UsbDriver_UseBackend(&kCounting);
    enumerate();
    EXPECT_EQ(found_, (std::vector<Found>{{std::string(511, 'n'), -1}}));
}

TEST_F(Backend, CountBelowZeroFindsNothing) {
    UsbDriver_UseBackend(&kCounting);
    counters.devices = -5;
    EXPECT_EQ(connect(), 0);
}

TEST_F(Backend, OpensNothingByName) {
    EXPECT_EQ(UsbDriver_CreateFile("any"), nullptr);
    EXPECT_EQ(UsbDriver_tagAdv_CreateFile("any"), nullptr);
}

TEST_F(Backend, ClaimsEveryName) {
    int untouched = 42;
    EXPECT_EQ(UsbDriver_IsDevOurs("any", 1, 2, &untouched), 1);
    EXPECT_EQ(untouched, 42);
}
