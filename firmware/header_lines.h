// SPDX-License-Identifier: MIT
// The header lines of a firmware file: a keyword, a blank and a value each. Only their positions
// count.
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace zel::firmware {

using HeaderLines = std::vector<std::string>;

// The lines in front of "M0" or "M1", without a carriage return at their end.
HeaderLines headerLinesOf(std::istream& file);

// The same of a file; nothing for one that can't be opened. Throws where it can't be read on: a
// header that ends there isn't whole.
std::optional<HeaderLines> headerOf(const std::string& name);

// A line from its first blank on, with the blank; empty without one.
std::string valueOf(const std::string& line);

// The value of a line; empty for one that isn't there.
std::string valueAt(const HeaderLines& lines, std::ptrdiff_t index);

// The lines that tell of one reader: a part number, then a version, a firmware name and two more
// versions. One firmware may stand behind several part numbers.
class ReaderBlock {
public:
    ReaderBlock(const HeaderLines& lines, const std::string& partNumber,
                const std::string& firmware);

    // The value `offset` lines from the firmware's; "Not Found" when the reader has no block.
    std::string value(std::ptrdiff_t offset) const;

private:
    const HeaderLines& lines_;
    std::ptrdiff_t firmware_ = -1;
};

} // namespace zel::firmware
