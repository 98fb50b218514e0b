// SPDX-License-Identifier: MIT
// Where the parts of the simulator are beside each other.
#pragma once

#include <string>

namespace zel::sim {

// The path of libzelsim.so that belongs to this program, of a build or of an installation; empty
// when there is none.
std::string preloadPath();

// A new folder that only this user may use, for a socket; empty, with errno, when that fails.
std::string newPrivateFolder();

} // namespace zel::sim
