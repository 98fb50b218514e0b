// SPDX-License-Identifier: MIT
// An input stream over memory that is made once and used again.
#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace zel::fuzz {

class MemoryStream : std::streambuf {
public:
    std::istream& of(std::string_view text) {
        char* const begin = const_cast<char*>(text.data()); // nothing is put back
        setg(begin, begin, begin + text.size());
        stream_.clear();
        return stream_;
    }

private:
    std::istream stream_{this};
};

} // namespace zel::fuzz
