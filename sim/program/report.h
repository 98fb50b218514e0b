// SPDX-License-Identifier: MIT
// What the program tells: results on stdout, remarks on stderr, both as JSON on demand.
#pragma once

#include "sim/server/json.h"

namespace zel::sim {

// A line of stdout. 0, or the exit code when it can't be written, which was told then.
int print(const std::string& line, bool json);

// Tells what is wrong; its exit code.
int fail(const Trouble& trouble, bool json);

// Something that goes on in another way than asked for.
void warn(const Trouble& trouble, bool json);

} // namespace zel::sim
