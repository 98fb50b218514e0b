// SPDX-License-Identifier: MIT
// The USB identities that a scan takes for proximity readers.
#pragma once

#include <string>

namespace zel::cli {

struct ReaderId {
    int vendor;
    int product;
    bool operator==(const ReaderId&) const = default;
};

// That of a plain reader.
ReaderId usualReaderId();

// Whether it is one of the table of products; a filter list of the user's own may have more.
bool isReaderId(const ReaderId& id);

// Whether a product of any family has it.
bool isProductId(const ReaderId& id);

// Four digits in lower case, as sysfs and udev tell them: "5a3e".
std::string idText(int id);

// The udev rule that lets in who sits at the machine, and where to put it.
std::string udevLine(const ReaderId& id);
std::string udevHint(const ReaderId& id);

} // namespace zel::cli
