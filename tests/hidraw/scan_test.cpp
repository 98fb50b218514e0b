// SPDX-License-Identifier: MIT
// Which nodes a scan opens, in what order, and what it keeps open.
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"
#include "tests/hidraw/descriptors.h"
#include "tests/hidraw/hidraw_test.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <gmock/gmock.h>
#include <unistd.h>

namespace zel::test {

namespace {

namespace fs = std::filesystem;

using HidrawScan = HidrawTest;

TEST_F(HidrawScan, FindsNothingWithoutAClassFolder) { EXPECT_EQ(connect(), Names{}); }

TEST_F(HidrawScan, NamesAReaderByItsNode) {
    bed.plug(0);
    EXPECT_EQ(connect(), Names{"/dev/hidraw0"});
    EXPECT_EQ(openNodes(), Names{"/dev/hidraw0"});
}

TEST_F(HidrawScan, AsksAnOpenNodeForItsIdentityOnceAndSendsNoReport) {
    MockReader& reader = bed.plug(0);
    connect();
    EXPECT_EQ(reader.trace(), "info\n");
}

TEST_F(HidrawScan, TakesReadersInTheOrderOfTheirNumbers) {
    for (unsigned number : {2u, 10u, 0u})
        bed.plug(number);
    EXPECT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw2", "/dev/hidraw10"}));
}

TEST_F(HidrawScan, OpensNoDeviceOfAnotherVendorOrProduct) {
    bed.plug(0, {0x5A3E, 0x9D24});
    bed.plug(1, {0x5A3F, 0x9D23});
    bed.plug(2);
    bed.plug(3, {0x9D23, 0x5A3E});
    EXPECT_EQ(connect(), Names{"/dev/hidraw2"});
    for (unsigned number : {0u, 1u, 3u})
        EXPECT_EQ(bed.reader(number).trace(), "") << number;
}

TEST_F(HidrawScan, OpensADeviceOfTheFilterList) {
    bed.plug(0, {0x1234, 0x8001});
    zelTagVidPid.rows[0].vendor = 0x1234;
    zelTagVidPid.rows[0].product = 0x8001;
    EXPECT_EQ(connect(), Names{"/dev/hidraw0"});
    zelTagVidPid.rows[0] = {};
}

TEST_F(HidrawScan, PassesOverEntriesOfTheClassFolderThatNameNoNode) {
    bed.plug(0);
    const fs::path folder = bed.root() / "sys/class/hidraw";
    for (const char* name :
         {"hidraw", "hidraw0x", "hidrawx0", "raw0", "hidraw-1", "hidraw4294967296"})
        fs::copy(folder / "hidraw0", folder / name, fs::copy_options::copy_symlinks);
    EXPECT_EQ(connect(), Names{"/dev/hidraw0"});
}

TEST_F(HidrawScan, FindsWhatIsPresentAtEachScan) {
    bed.plug(0);
    bed.plug(1);
    ASSERT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw1"}));
    disconnect();
    bed.unplug(0);
    bed.plug(2);
    EXPECT_EQ(connect(), (Names{"/dev/hidraw1", "/dev/hidraw2"}));
}

TEST_F(HidrawScan, ClosesItsNodesWhenTheProgramIsReplaced) {
    bed.plug(0);
    bed.plug(1);
    connect();
    Names closed;
    for (const auto& [descriptor, node] : openDescriptors(bed.root()))
        if (isClosedOnExec(descriptor))
            closed.push_back(node);
    EXPECT_THAT(closed, ::testing::UnorderedElementsAre("/dev/hidraw0", "/dev/hidraw1"));
}

TEST_F(HidrawScan, OpensANodeAsDescriptorZeroToo) {
    bed.plug(0);
    const int input = dup(0);
    ::close(0);
    EXPECT_EQ(connect(), Names{"/dev/hidraw0"});
    EXPECT_EQ(openDescriptors(bed.root())[0], "/dev/hidraw0");
    EXPECT_LT(Ping(), 65536u);
    disconnect();
    dup2(input, 0);
    ::close(input);
}

// Readers 0, 1 and 2, of which number 1 can't be opened: what was found before it stays.
class HidrawScanEnds : public HidrawTest {
protected:
    void SetUp() override {
        HidrawTest::SetUp();
        for (unsigned number : {0u, 1u, 2u})
            bed.plug(number);
    }
    void expectOnlyTheFirst() {
        EXPECT_EQ(connect(), Names{"/dev/hidraw0"});
        EXPECT_EQ(openNodes(), Names{"/dev/hidraw0"});
        EXPECT_EQ(bed.reader(2).trace(), "");
    }
};

TEST_F(HidrawScanEnds, AtANodeThatIsMissing) {
    fs::remove(bed.node(1));
    expectOnlyTheFirst();
}

TEST_F(HidrawScanEnds, WithNothingOpenWhenTheFirstNodeIsMissing) {
    fs::remove(bed.node(0));
    EXPECT_EQ(connect(), Names{});
    EXPECT_EQ(openNodes(), Names{});
}

TEST_F(HidrawScanEnds, AtANodeThatIsAFolder) {
    replaceByFolder(bed.node(1));
    expectOnlyTheFirst();
}

TEST_F(HidrawScanEnds, AtANodeThatAnotherVendorTookOver) {
    bed.reader(1).behave({.identity = {0x5A3F, 0x9D23}});
    expectOnlyTheFirst();
}

TEST_F(HidrawScanEnds, AtANodeThatAnotherProductTookOver) {
    bed.reader(1).behave({.identity = {0x5A3E, 0x9D24}});
    expectOnlyTheFirst();
}

TEST_F(HidrawScanEnds, AtANodeThatTellsNoIdentity) {
    bed.reader(1).behave({.infoError = ENODEV});
    expectOnlyTheFirst();
}

TEST_F(HidrawScanEnds, AndTheNextScanStartsAfresh) {
    const fs::path aside = bed.root() / "aside";
    fs::rename(bed.node(0), aside);
    ASSERT_EQ(connect(), Names{});
    fs::rename(aside, bed.node(0));
    EXPECT_EQ(connect(), (Names{"/dev/hidraw0", "/dev/hidraw1", "/dev/hidraw2"}));
}

// An unprivileged user while it lives, when the tests run as root.
class Unprivileged {
public:
    Unprivileged() : wasRoot_(geteuid() == 0) {
        if (wasRoot_ && seteuid(kNobody) != 0)
            std::perror("seteuid");
    }
    ~Unprivileged() {
        if (wasRoot_ && seteuid(0) != 0)
            std::abort();
    }
    Unprivileged(const Unprivileged&) = delete;
    Unprivileged& operator=(const Unprivileged&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool wasRoot_;
};

TEST_F(HidrawScanEnds, AtANodeWithoutPermission) {
    bed.openToAllUsers();
    fs::permissions(bed.node(0), fs::perms::none);
    const Unprivileged user;
    if (euidaccess(bed.node(0).c_str(), R_OK) == 0)
        skipProgram("this user may open any node");
    EXPECT_EQ(connect(), Names{});
    EXPECT_EQ(openNodes(), Names{});
    EXPECT_EQ(bed.reader(1).trace(), "");
}

} // namespace

} // namespace zel::test
