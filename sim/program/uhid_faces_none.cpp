// SPDX-License-Identifier: MIT
// On a system without uhid.
#include "sim/program/uhid_faces.h"

namespace zel::sim {

std::variant<std::vector<std::unique_ptr<Face>>, Trouble> makeUhidFaces(const World&) {
    return Trouble{Exit::NoDevice, "this system has no uhid",
                   "leave --uhid out, and preload libzelsim.so instead"};
}

} // namespace zel::sim
