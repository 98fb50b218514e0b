// SPDX-License-Identifier: MIT
// The rows, a file for each kind of operation.
#pragma once

#include "tests/steps/operation.h"

namespace zel::test::steps {

std::vector<Operation> tagCardRows();
std::vector<Operation> tagServiceRows();
std::vector<Operation> tagReadRows();
std::vector<Operation> tagWriteRows();
std::vector<Operation> tagPlusRows();
std::vector<Operation> tagBlobRows();
std::vector<Operation> plusWriteRows();
std::vector<Operation> plusReadRows();
std::vector<Operation> flashRows();
std::vector<Operation> connectRows();
std::vector<Operation> echoRows();
std::vector<Operation> bandRows();
std::vector<Operation> bandCardRows();
std::vector<Operation> bandConfigRows();
std::vector<Operation> asciiRows();
std::vector<Operation> streamCardRows();
std::vector<Operation> streamConfigRows();

} // namespace zel::test::steps
