// SPDX-License-Identifier: MIT
// The commands while the n-th system call of a kind fails, once or from then on. A short run takes
// some of the points; ZEL_FAULT_EVERY=1 takes all, see run_long.
#include "tests/faults/judge.h"
#include "tests/faults/watched_calls.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <sys/syscall.h>

namespace zel::test {

namespace {

constexpr int kEvery = 503;      // of the points in a short run; a prime, so that kinds alternate
constexpr int kCannotWrite = 73; // an exit code
constexpr int kForEver = 10'000; // calls: a line that takes nothing holds its writer for good

int every() {
    const char* const text = std::getenv("ZEL_FAULT_EVERY");
    return text ? std::max(std::atoi(text), 1) : kEvery;
}

std::string textOf(const CallFailure& failure) {
    return std::string(nameOfCall(failure.number)) + " " + std::to_string(failure.nth) + " " +
           strerrorname_np(failure.error) + (failure.times > 1 ? " from then on" : "");
}

// A connection that lost bytes is no longer one: its sends go on failing.
bool canRecover(const Scene& scene, long number) {
    return scene.place != Scene::Place::Bridge || number != SYS_sendto;
}

std::vector<CallFailure> pointsOf(const Scene& scene, const SceneRun& undisturbed) {
    std::vector<CallFailure> points;
    for (const WatchedCall& call : watchedCalls()) {
        const int count = undisturbed.account.calls.counts[static_cast<std::size_t>(call.number)];
        for (int nth = 1; nth <= count; ++nth)
            for (const int error : call.errors)
                for (const int times : {1, kForEver})
                    if (times != 1 || canRecover(scene, call.number))
                        points.push_back({call.number, nth, error, times});
    }
    return points;
}

const Scene& sceneOf(const std::string& name) {
    return *std::find_if(scenes().begin(), scenes().end(),
                         [&](const Scene& scene) { return scene.name == name; });
}

class SystemCallTest : public ::testing::Test {
protected:
    // What is wrong where a call of this number fails, one after the other.
    std::string faultsOf(const Scene& scene, long number, int error) {
        const SceneRun undisturbed = undisturbedRun(scene);
        std::string faults;
        for (int nth = 1; nth <= undisturbed.account.calls.counts[static_cast<std::size_t>(number)];
             ++nth) {
            const CallFailure failure = {number, nth, error, 1};
            const std::string fault =
                faultOf(scene, failure, runner_.run(scene, failure), undisturbed);
            faults += fault.empty() ? "" : textOf(failure) + ": " + fault + "\n";
        }
        return faults;
    }

    SceneRun undisturbedRun(const Scene& scene) {
        SceneRun run = runner_.run(scene, {});
        if (run.account.isTrapped)
            return run;
        std::cout << "skipped: this machine traps no system calls" << std::endl;
        std::exit(77);
    }

    SceneRun run(const Scene& scene, const CallFailure& failure) {
        return runner_.run(scene, failure);
    }

private:
    TemporaryFolder devices_;
    TemporaryFolder folder_;
    SceneRunner runner_{devices_.path()};
};

using UnreadableFile = SystemCallTest;
using WrittenFile = SystemCallTest;

class FailingSystemCall : public SystemCallTest, public ::testing::WithParamInterface<Scene> {
protected:
    void tell(std::size_t points, const std::map<int, int>& exits) const {
        std::cout << GetParam().name << ": " << points << " points; exit";
        for (const auto& [exit, count] : exits)
            std::cout << " " << exit << ": " << count << ";";
        std::cout << std::endl;
    }
};

} // namespace

TEST_P(FailingSystemCall, EndsWithATrueWordAndLeavesFilesWhole) {
    const SceneRun undisturbed = undisturbedRun(GetParam());
    ASSERT_EQ(faultOf(GetParam(), {}, undisturbed, undisturbed), "") << undisturbed.err;
    const auto points = pointsOf(GetParam(), undisturbed);
    std::map<int, int> exits;
    std::size_t done = 0;
    for (std::size_t index = 0; index < points.size(); index += static_cast<std::size_t>(every())) {
        const SceneRun disturbed = run(GetParam(), points[index]);
        const std::string fault = faultOf(GetParam(), points[index], disturbed, undisturbed);
        EXPECT_EQ(fault, "") << textOf(points[index]) << ": exit " << disturbed.exit
                             << "\nstdout: " << disturbed.out << "\nstderr: " << disturbed.err;
        ++exits[disturbed.exit];
        ++done;
    }
    tell(done, exits);
}

TEST_F(UnreadableFile, OfFirmwareIsNeverLoadedInPart) {
    EXPECT_EQ(faultsOf(sceneOf("FirmwareLoad"), SYS_read, EIO), "");
}

TEST_F(UnreadableFile, OfSettingsIsNeverImportedInPart) {
    EXPECT_EQ(faultsOf(sceneOf("ConfigImport"), SYS_read, EIO), "");
    EXPECT_EQ(faultsOf(sceneOf("ConfigImport"), SYS_openat, ENFILE), "");
    EXPECT_EQ(faultsOf(sceneOf("ConfigImport"), SYS_lseek, ESPIPE), "");
}

// Some disks tell of what they didn't take only then.
TEST_F(WrittenFile, OfATraceIsToldWhenItsCloseFails) {
    const Scene& scene = sceneOf("Trace");
    const SceneRun undisturbed = undisturbedRun(scene);
    int told = 0;
    for (int nth = 1; nth <= undisturbed.account.calls.counts[SYS_close]; ++nth)
        told += run(scene, {SYS_close, nth, EDQUOT, 1}).exit == kCannotWrite;
    EXPECT_EQ(told, 1);
}

INSTANTIATE_TEST_SUITE_P(Commands, FailingSystemCall, ::testing::ValuesIn(scenes()),
                         [](const auto& scene) { return scene.param.name; });

} // namespace zel::test
