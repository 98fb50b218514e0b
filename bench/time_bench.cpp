// SPDX-License-Identifier: MIT
// Times every way with Google Benchmark.
#include "bench/ways.h"

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

using zel::bench::Way;

void run(benchmark::State& state, const Way& way) {
    if (!way.begin()) {
        state.SkipWithError("can't begin");
        return;
    }
    int result = 0;
    for (auto step : state) {
        static_cast<void>(step);
        benchmark::DoNotOptimize(result = way.once());
    }
    state.counters["result"] = result;
    way.end();
}

void enrol(const Way& way) {
#ifdef __clang_analyzer__ // can't see that Google Benchmark keeps what it is given
    static_cast<void>(way);
    static_cast<void>(run);
#else
    benchmark::RegisterBenchmark(way.name, [&way](benchmark::State& state) { run(state, way); });
#endif
}

} // namespace

int main(int count, char** arguments) {
    for (const auto ways : zel::bench::allWays())
        std::ranges::for_each(ways, enrol);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
