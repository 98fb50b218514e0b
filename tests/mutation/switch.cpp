// SPDX-License-Identifier: MIT
// The chosen point, from ZEL_MUTANT; and for ZEL_MUTATION_MAP a file that tells which test reaches
// which points.
#include "tests/mutation/switch.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Ready before any other static object is made.
int chosenPoint() {
    static const int point = [] {
        const char* const text = std::getenv("ZEL_MUTANT");
        return text ? std::atoi(text) : -1;
    }();
    return point;
}

std::vector<bool>& reached() {
    static auto& points = *new std::vector<bool>;
    return points;
}

bool wantsMap() {
    static const bool wants = std::getenv("ZEL_MUTATION_MAP") != nullptr;
    return wants;
}

void note(int point) {
    const auto place = static_cast<std::size_t>(point);
    if (reached().size() <= place)
        reached().resize(place + 1);
    reached()[place] = true;
}

// A line a test: its milliseconds, its name and the points that it reached; a star for what the
// program reaches before its first test, on which any test may stand.
class MapWriter : public ::testing::EmptyTestEventListener {
    void OnTestProgramStart(const ::testing::UnitTest&) override { tell(0, "*"); }
    void OnTestStart(const ::testing::TestInfo&) override { reached().clear(); }
    void OnTestEnd(const ::testing::TestInfo& test) override {
        tell(test.result()->elapsed_time(),
             std::string(test.test_suite_name()) + "." + test.name());
    }

    void tell(long long milliseconds, const std::string& name) {
        std::fprintf(file_, "%lld %s", milliseconds, name.c_str());
        for (std::size_t point = 0; point < reached().size(); ++point)
            if (reached()[point])
                std::fprintf(file_, " %zu", point);
        std::fputc('\n', file_);
        std::fflush(file_);
    }

    std::FILE* file_ = std::fopen(std::getenv("ZEL_MUTATION_MAP"), "w");
};

[[maybe_unused]] const bool isListening = [] {
    if (wantsMap())
        ::testing::UnitTest::GetInstance()->listeners().Append(new MapWriter);
    return true;
}();

} // namespace

bool zel::mutation::isChosen(int point) {
    if (wantsMap())
        note(point);
    return point == chosenPoint();
}
