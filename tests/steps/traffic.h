// SPDX-License-Identifier: MIT
// The transfers of an operation that goes well, or of one whose exchange fails, on the wire of the
// device that is tested.
#pragma once

#include "tests/steps/operation.h"
#include "tests/steps/wire.h"

#include <string>
#include <vector>

namespace zel::test::steps {

using Traffic = std::vector<std::string>;

std::string shown(const Traffic& traffic);

// Whether each transfer begins as it is told.
bool isAsTold(const Traffic& traffic, const Traffic& told);

// The operation goes well.
Traffic trafficOf(const Steps& steps);

// An exchange fails once, and the operation goes on by trying it again.
Traffic trafficOf(const Steps& steps, const Point& point);

// An exchange fails `tries` times; commands that `then` names follow it, with "*" those behind it.
Traffic trafficOf(const Steps& steps, const Point& point, int tries, const std::string& then);

} // namespace zel::test::steps
