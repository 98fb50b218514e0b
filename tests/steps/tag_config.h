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

// What a read fills, in its order: the IDs, the four blocks, the field data, three texts, the
// marks; then the state of the probe and what the reader is known to lack.
extern const std::vector<Sight> kReadSights;

// What a write changes: the LUID, the four blocks, the field data and the keys in the reader,
// whether they are committed, the record's marks, and what the reader is known to lack.
extern const std::vector<Sight> kWriteSights;

// For a read: a reader and a record of other settings. For a write: a configuration that was read
// and then changed in every group, two keys among them.
void prepareRead();
void prepareWrite();

// The steps of a read on USB of the one configuration, with its sights.
Steps readOneSteps();

// What the probe for configurations finds: the state, the highest and the active configuration, its
// card type.
extern const std::vector<Sight> kProbeSights;
void prepareProbe();

// Queries as `then` of an outcome tells them.
std::string asked(const std::vector<std::string>& commands);

} // namespace zel::test::steps
