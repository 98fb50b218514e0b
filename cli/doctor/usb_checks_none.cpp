// SPDX-License-Identifier: MIT
// Platforms that tell no more than the library does.
#include "cli/doctor/usb_checks.h"

namespace zel::cli {

Findings checkUsb(const Machine&) { return {}; }

} // namespace zel::cli
