// SPDX-License-Identifier: MIT
// A proximity reader whose settings differ from those in the record, both ways.
#pragma once

#include "tests/steps/sights.h"

namespace zel::test::steps {

// Settings that need no repair, in the reader's configuration n.
void fillReader(std::size_t n);

// A record that was read of another reader, all of it marked.
void ageRecord(int n = 0);

// The marks of what is to be written, as bits, and setting all of them.
unsigned marksOf(int n);
void markAll(int n);

// Queries as `then` of an outcome tells them.
std::string asked(const std::vector<std::string>& commands);

} // namespace zel::test::steps
