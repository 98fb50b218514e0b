// SPDX-License-Identifier: MIT
// All rows in one.
#include "tests/steps/rows.h"

namespace zel::test::steps {

std::vector<Operation> allOperations() {
    std::vector<Operation> all;
    for (const auto& rows :
         {tagCardRows, tagServiceRows, tagReadRows, tagWriteRows, tagPlusRows, tagBlobRows,
          streamCardRows, streamConfigRows, asciiRows, bandRows, bandCardRows, bandConfigRows,
          echoRows, flashRows, connectRows, plusReadRows, plusWriteRows})
        all += rows();
    return all;
}

} // namespace zel::test::steps
