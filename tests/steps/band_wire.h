// SPDX-License-Identifier: MIT
// What the rows of a magnetic stripe reader share.
#pragma once

#include "tests/steps/operation.h"

#include <string>

namespace zel::test::steps {

// A reply that is cut is a good one on USB, and none on a line.
Step ask(Place place, const std::string& command, const Outcome& lost, const Outcome& notAnswered,
         const Outcome& cut);

void swipeCard();

} // namespace zel::test::steps
