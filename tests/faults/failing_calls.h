// SPDX-License-Identifier: MIT
// Calls of the library, each allocation of which fails.
#pragma once

#include <functional>
#include <string>

namespace zel::test {

// A call whose result is 1 when it went well, and what it then leaves.
using FailingCall = std::function<int()>;
using Effect = std::function<std::string()>;

// Lets each allocation of the call fail, alone and with all behind it. The result is then a
// failure, or the effect is there; the next call goes well, and nothing is lost on the way.
void failEach(
    const FailingCall& call, const Effect& effect = [] { return std::string(); });

} // namespace zel::test
