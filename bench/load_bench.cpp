// SPDX-License-Identifier: MIT
// Times loading and unloading a library, and tells the memory that it adds while loaded.
//
// libstdc++ and libc are already there, as in any C++ program.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string>

namespace {

const char* library = nullptr;

struct Memory {
    double resident = 0; // KiB
    double own = 0;      // KiB that no other process shares and that differ from the file
};

Memory memoryNow() {
    Memory memory;
    std::ifstream table("/proc/self/smaps_rollup");
    for (std::string word; table >> word;) {
        if (word == "Rss:")
            table >> memory.resident;
        else if (word == "Private_Dirty:")
            table >> memory.own;
    }
    return memory;
}

bool isLoaded() {
    void* const handle = dlopen(library, RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

void load(benchmark::State& state) {
    for (auto step : state) {
        static_cast<void>(step);
        void* const handle = dlopen(library, RTLD_NOW);
        if (!handle) {
            state.SkipWithError(dlerror());
            break;
        }
        dlclose(handle);
    }
    if (isLoaded())
        state.SkipWithError("dlclose left the library in place");
}

// Also reads the two words once before, so that what reading takes isn't counted.
void tellMemory(benchmark::State& state) {
    memoryNow();
    const Memory before = memoryNow();
    void* const handle = dlopen(library, RTLD_NOW);
    const Memory after = memoryNow();
    for (auto step : state)
        static_cast<void>(step);
    state.counters["resident"] = after.resident - before.resident;
    state.counters["own"] = after.own - before.own;
    if (handle)
        dlclose(handle);
}

BENCHMARK(tellMemory)->Name("memory")->Iterations(1);
BENCHMARK(load);

} // namespace

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (count != 2)
        return EXIT_FAILURE;
    library = arguments[1];
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
