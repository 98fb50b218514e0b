// SPDX-License-Identifier: MIT
// Each exchange of each operation on a device fails once in each way; behind it the same operation
// goes well.
#include "tests/steps/bench.h"
#include "tests/steps/traffic.h"
#include "tests/support/descriptors.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <cstring>
#include <iterator>

using namespace zel::test;
using namespace zel::test::steps;

namespace {

constexpr std::uint64_t kUntilIdle = 3'000'000; // µs, longer than a device works on anything
constexpr Fault kAllFaults[] = {Fault::Send, Fault::Fetch,   Fault::Cut,     Fault::Ones,
                                Fault::Data, Fault::DataCut, Fault::DataOnes};
constexpr const char* kFaultNames[] = {"send",
                                       "fetch",
                                       "short answer",
                                       "ones",
                                       "data or its answer",
                                       "short status",
                                       "ones for a status"};

using Views = std::vector<std::string>;
// What a call left.
struct Left {
    long long result;
    std::int64_t error;
    Views views;
    Traffic traffic;
};

bool isEmpty(const std::string& view) { return view.find_first_not_of("0 ") == view.npos; }

char symbolOf(const std::string& view, const std::string& before, const std::string& good) {
    if (view == before)
        return '.';
    if (view == good)
        return '+';
    return isEmpty(view) ? '0' : '!';
}

class EveryStep : public BenchTest, public ::testing::WithParamInterface<Operation> {
protected:
    static const Operation& operation() { return GetParam(); }

    void begin() {
        set(operation().place);
        operation().prepare();
        lines().pump();
        apparatus().wire->takeTraffic();
        bus().takeTrace();
        record().lLastErr = 0;
        before_ = views();
        descriptors_ = descriptorsBesideLines();
        nextRecord_ = DevDat[1];
    }

    // Each open line has two ends.
    static std::size_t descriptorsBesideLines() {
        return openDescriptors().size() - 2 * static_cast<std::size_t>(lines().openLines());
    }

    static Views views() {
        Views all;
        for (const Sight& sight : operation().sights)
            all.push_back(sight.view());
        return all;
    }

    Left make(const Call& call) const {
        const long long result = call.make();
        lines().pump(); // what was written behind the last pause, and its answer
        EXPECT_TRUE(isBufferAloneTouched()) << "a byte beside the caller's buffer";
        EXPECT_EQ(std::memcmp(&DevDat[1], &nextRecord_, sizeof nextRecord_), 0)
            << "another record is touched";
        EXPECT_EQ(descriptorsBesideLines(), descriptors_) << "a descriptor is left";
        return {result, record().lLastErr, views(), apparatus().wire->takeTraffic()};
    }

    std::string seen(const Views& views) const {
        std::string symbols;
        for (std::size_t i = 0; i < views.size(); ++i)
            symbols += symbolOf(views[i], before_[i], good_.empty() ? views[i] : good_[i]);
        return symbols;
    }

    void makeWell(const Call& call) {
        begin();
        good_.clear();
        const Left left = make(call);
        EXPECT_EQ(left.result, operation().result);
        EXPECT_EQ(left.error, operation().error);
        EXPECT_EQ(seen(left.views), operation().seen);
        EXPECT_TRUE(isAsTold(left.traffic, trafficOf(operation().steps))) << shown(left.traffic);
        good_ = left.views;
    }

    void expectOutcome(const Left& left, const Outcome& outcome, const Traffic& told) const {
        EXPECT_EQ(left.result, outcome.result);
        EXPECT_EQ(left.error, outcome.error) << std::hex << left.error;
        EXPECT_EQ(seen(left.views), outcome.seen);
        EXPECT_TRUE(isAsTold(left.traffic, told)) << shown(left.traffic) << "told:\n"
                                                  << shown(told);
    }

    // The device works again, and the caller tries again.
    void expectRecovery(const Call& call, const Outcome& outcome) {
        apparatus().wire->heal();
        wait(kUntilIdle);
        operation().again();
        const Left left = make(call);
        EXPECT_EQ(left.result, outcome.laterResult.value_or(operation().result)) << "behind it";
        EXPECT_EQ(seen(left.views), outcome.later.empty() ? operation().seen : outcome.later)
            << "behind it";
        EXPECT_EQ(bus().openHandles(), apparatus().wire->hasReports() ? 1 : 0);
    }

    Left makeBadly(const Call& call, const Point& point, int times) {
        begin();
        apparatus().wire->spoil(operation().steps, point, times);
        return make(call);
    }

    // What the operation passes over it doesn't try again.
    static int triesOf(const Point& point, const Outcome& outcome) {
        return outcome.then == "*" ? 1 : operation().steps[point.exchange].tries;
    }

    void failAt(const Call& call, const Point& point, const Outcome& outcome) {
        const int tries = triesOf(point, outcome);
        const Left left = makeBadly(call, point, tries);
        expectOutcome(left, outcome, trafficOf(operation().steps, point, tries, outcome.then));
        expectRecovery(call, outcome);
    }

    // An operation that tries again by itself, or whose report is sent again, isn't disturbed.
    void failOnceAt(const Call& call, const Point& point) {
        const Left left = makeBadly(call, point, 1);
        const Outcome outcome{operation().result, operation().error, operation().seen};
        const bool isResent = point.trouble == Trouble::OnceRefused;
        const Steps& steps = operation().steps;
        const Traffic told = isResent ? trafficOf(steps) : trafficOf(steps, point);
        expectOutcome(left, outcome, told);
        apparatus().wire->heal();
    }

    // Any bytes: nothing is told of them but that the library goes on behind them.
    void makeNoiseAt(const Call& call, const Point& point) {
        const Step& step = operation().steps[point.exchange];
        makeBadly(call, {point.exchange, point.fault, Trouble::Noise}, step.tries);
        apparatus().wire->heal();
        wait(kUntilIdle);
        operation().again();
        make(call);
    }

    void failAt(const Call& call, std::size_t exchange, Fault fault) {
        const Step& step = operation().steps[exchange];
        const Outcome& outcome = *step.of(fault);
        SCOPED_TRACE(::testing::Message()
                     << call.name << ", exchange " << exchange << ' ' << step.command << ": "
                     << kFaultNames[static_cast<std::size_t>(fault)]);
        const Point point{exchange, fault};
        failAt(call, point, outcome);
        if (triesOf(point, outcome) > 1)
            failOnceAt(call, point);
        if (fault == Fault::Ones || fault == Fault::DataOnes)
            makeNoiseAt(call, point);
        const bool isReport = fault == Fault::Send || fault == Fault::Data;
        if (isReport && apparatus().wire->hasReports())
            failOnceAt(call, {exchange, fault, Trouble::OnceRefused});
    }

    // The ways in which an exchange of the row's may fail.
    static std::vector<Fault> faultsAt(std::size_t exchange) {
        std::vector<Fault> faults;
        std::copy_if(
            std::begin(kAllFaults), std::end(kAllFaults), std::back_inserter(faults),
            [&](Fault fault) { return operation().steps[exchange].of(fault).has_value(); });
        return faults;
    }

    void failInEachWay(const Call& call) {
        for (std::size_t n = 0; n < operation().steps.size(); ++n)
            for (const Fault fault : faultsAt(n))
                failAt(call, n, fault);
    }

    // Another name of the same operation: each exchange fails in one of the ways, by turns.
    void failInTurn(const Call& call) {
        for (std::size_t n = 0; n < operation().steps.size(); ++n)
            if (const auto faults = faultsAt(n); !faults.empty())
                failAt(call, n, faults[n % faults.size()]);
    }

private:
    Views before_;
    Views good_;
    std::size_t descriptors_ = 0;
    tsDevDat nextRecord_;
    TemporaryFolder folder_;
};

} // namespace

TEST_P(EveryStep, MayFailAndLeavesWhatIsTold) {
    const Call& first = operation().calls.front();
    makeWell(first);
    failInEachWay(first);
    for (const Call& call : std::span(operation().calls).subspan(1)) {
        makeWell(call);
        failInTurn(call);
    }
}

INSTANTIATE_TEST_SUITE_P(Operations, EveryStep, ::testing::ValuesIn(allOperations()),
                         [](const auto& test) { return test.param.name; });
