// SPDX-License-Identifier: MIT
// The paged store of a reader: field and separator data, and the two key values.
#pragma once

#include "frame/zelTagState.h"

namespace zel::tag {

// Fills uSFD from the reader's pages; all zero when the reader can't deliver them. False when a
// page could not be asked for in a report: that ends the read.
bool readFieldData(tsDevDat& record, tsTagCfg& config);

// Pages that the header of uSFD claims: 12 in its old form, 0 to 255 in its new one.
int pagesOf(const uSFD& data);

// Whether the pages claimed are as many as the record holds.
bool pagesFit(const uSFD& data);

// Sends all pages. A failed one is told by the error word and the record's flags, and passed over.
void writeFieldData(tsDevDat& record, const tsTagCfg& config);

// Sends the key values that are to be sent.
void writeKeys(tsTagCfg& config);

} // namespace zel::tag

ZELTAGAPI_BEGIN

// Sends one of the two key values: selector 1 the first, 17 the second.
ZELTAGAPI_EXPORT void WriteHashKeyBlock(tsTagCfg* config, int device, unsigned char selector);

ZELTAGAPI_END
