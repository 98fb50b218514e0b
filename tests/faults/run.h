// SPDX-License-Identifier: MIT
// Runs a scene in a process of its own, with one failure of a system call.
#pragma once

#include "tests/cli/files_here.h"
#include "tests/faults/scene.h"
#include "tests/faults/trapped_calls.h"

#include <string>

namespace zel::test {

// What the process itself tells of its run.
struct Account {
    bool isTrapped = false; // false: this machine traps no calls
    TrapRecord calls;
    int leftOpen = 0;       // descriptors
    std::size_t memory = 0; // of the reader
};

struct SceneRun {
    int exit = 0; // the exit code; minus the signal that ended the process
    std::string out;
    std::string err;
    Files files;
    Account account;
};

class SceneRunner {
public:
    // Works in the folder it is made in; `root` is one for the files of devices.
    explicit SceneRunner(std::string root);
    ~SceneRunner();
    SceneRunner(const SceneRunner&) = delete;
    SceneRunner& operator=(const SceneRunner&) = delete;

    SceneRun run(const Scene& scene, const CallFailure& failure);

private:
    [[noreturn]] void act(const Scene& scene, const CallFailure& failure);

    std::string root_;
    int out_;
    int err_;
    Account* account_; // shared with the processes
};

} // namespace zel::test
