// SPDX-License-Identifier: MIT
// The name of a hidraw node up to a line end, then the text of its attribute.
#include "fuzz/target.h"
#include "transport/hidraw_node.h"

using namespace zel;
using namespace zel::fuzz;

namespace {

constexpr unsigned kNumber = 4711; // what a node that isn't told keeps
constexpr std::uint16_t kId = 0x5A5A;

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    HidrawNode node = {kNumber, kId, kId};
    const std::string_view name = input.textUpTo('\n');
    const bool isNode = takesName(name, node);
    require(!isNode || (name.size() > 6 && name.find_first_not_of("0123456789", 6) == name.npos));
    const bool isTold = takesIds(input.text(), node);
    require(isTold || (node.vendor == kId && node.product == kId));
    require(!isTold || input.text().find("HID_ID=") != std::string_view::npos);
    return 0;
}
