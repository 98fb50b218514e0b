// SPDX-License-Identifier: MIT
// Which calls wait while another thread's poll is on the wire, and which don't.
#include "tests/threads/threads_test.h"

#include <functional>

using namespace zel::test;

namespace {

struct Row {
    const char* name;
    std::function<void()> call;
};

void PrintTo(const Row& row, std::ostream* stream) { *stream << row.name; }

const std::string kIdQuery = "0 > 8F 00 00 00 00 00 00 00\n";
const std::string kRestOfPoll = "0 < 71 1B 34 00 00 00 00 00\n"
                                "0 > 8E 00 00 00 00 00 00 00\n"
                                "0 < 1A 00 00 00 00 00 00 00\n";

std::string textOf(const std::vector<Event>& events) {
    std::string text;
    for (const Event& event : events)
        text += std::to_string(event.member) + ' ' + event.text + '\n';
    return text;
}

class DuringAPoll : public ThreadsTest {
protected:
    // Makes the call while a poll, thread 0, stays in its first exchange until the call waits or
    // has returned. Both on the wire.
    static std::string wireDuringPoll(const std::function<void()>& call) {
        takeEvents();
        Crew crew(2);
        crew.start([] {
            unsigned char id[ZELTAGAPI_ID_SIZE];
            GetActiveID(id, 8);
        });
        crew.start([&call] {
            Crew::awaitExchangeOf(0);
            call();
            noteEvent("returned");
        });
        crew.join();
        waits_ = Crew::waits(1);
        return textOf(takeEvents());
    }

    // The call alone, as thread 1.
    static std::string wireAlone(const std::function<void()>& call) {
        std::string text;
        for (const std::string& line : wireOf(call))
            text += "1 " + line + '\n';
        return text + "1 returned\n";
    }

    static inline int waits_ = 0;
};

class LockedCall : public DuringAPoll, public ::testing::WithParamInterface<Row> {};
class OtherCall : public DuringAPoll, public ::testing::WithParamInterface<Row> {};

unsigned char buffer[ZELTAGAPI_ID_SIZE];
char name[512];
sCfgFlags flags;
sIDBitCnts bitCounts;
sTimeParms times;

#define ROW(function, arguments)                                                                   \
    Row {                                                                                          \
#function, [] { (void)function arguments; }                                                \
    }

const Row kLocked[] = {
    ROW(GetActiveID, (buffer, 8)),
    ROW(GetActiveID32, (buffer, 32)),
    ROW(ReadCfg, ()),
    ROW(WriteCfg, ()),
    ROW(USBConnect, (nullptr)),
    ROW(USBDisconnect, ()),
    ROW(BeepNow, (1, 0)),
};

// Calls that do nothing on the wire.
const Row kOther[] = {
    ROW(GetFlags, (&flags)),
    ROW(SetFlags, (&flags)),
    ROW(GetIDBitCnts, (&bitCounts)),
    ROW(SetIDBitCnts, (&bitCounts)),
    ROW(GetTimeParms, (&times)),
    ROW(SetTimeParms, (&times)),
    ROW(getActiveID_byte, (0)),
    ROW(GetDevCnt, ()),
    ROW(SetActDev, (0)),
    ROW(GetActDev, ()),
    ROW(GetProduct, ()),
    ROW(GetDevType, ()),
    ROW(GetDevName, (name)),
    ROW(getDevName_char, (0)),
    ROW(GetDID, ()),
    ROW(GetLUID, ()),
    ROW(SetLUID, (1)),
    ROW(GetSN, ()),
    ROW(GetMaxConfig, ()),
    ROW(GetActConfig, ()),
    ROW(SetActConfig, (0)),
    ROW(GetCardType, ()),
    ROW(GetFullFWVersion, ()),
    ROW(GetFWFilename, ()),
    ROW(getPartNumberString, ()),
    ROW(GetVidPidVendorName, ()),
    ROW(GetLastLibErr, ()),
    ROW(GetLibVersion, (nullptr, nullptr, nullptr)),
    ROW(SetConnectProduct, (1)),
    ROW(SetUnsupportedProductErrorCode, (0)),
};

std::string rowName(const ::testing::TestParamInfo<Row>& row) { return row.param.name; }

} // namespace

TEST_P(LockedCall, WaitsUntilThePollIsOver) {
    USBConnect(nullptr);
    const std::string alone = wireAlone(GetParam().call);
    USBConnect(nullptr);
    EXPECT_EQ(wireDuringPoll(GetParam().call), kIdQuery + kRestOfPoll + alone);
    EXPECT_EQ(waits_, 1);
}

INSTANTIATE_TEST_SUITE_P(Threads, LockedCall, ::testing::ValuesIn(kLocked), rowName);

TEST_P(OtherCall, ReturnsWhileThePollStaysOnTheWire) {
    EXPECT_EQ(wireDuringPoll(GetParam().call), kIdQuery + "1 returned\n" + kRestOfPoll);
    EXPECT_EQ(waits_, 0);
}

INSTANTIATE_TEST_SUITE_P(Threads, OtherCall, ::testing::ValuesIn(kOther), rowName);

// Its query goes out between the two halves of the poll's: only the locked calls are kept apart.
TEST_F(DuringAPoll, AQueryWithoutTheLockGoesOut) {
    const std::string wire = wireDuringPoll([] { GetBeeperVolume(); });
    EXPECT_EQ(wire.rfind(kIdQuery + "1 > 8C 06 00 00 00 00 00 00\n1 < ", 0), 0U) << wire;
    EXPECT_EQ(waits_, 0);
}
