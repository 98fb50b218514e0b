// SPDX-License-Identifier: MIT
// A simulator of a process's own.
#pragma once

#include <string>

namespace zel::sim {

// Starts one for a scenario; it ends when this process does. Its socket, empty when it couldn't be
// started; it has told on stderr why.
std::string startPrivateServer(const std::string& scenario);

} // namespace zel::sim
