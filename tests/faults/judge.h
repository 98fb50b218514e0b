// SPDX-License-Identifier: MIT
// What holds of every run, whatever fails.
#pragma once

#include "tests/faults/run.h"

#include <string>

namespace zel::test {

// What is wrong with a run beside the one in which nothing failed; empty: nothing.
std::string faultOf(const Scene& scene, const CallFailure& failure, const SceneRun& run,
                    const SceneRun& undisturbed);

} // namespace zel::test
