// SPDX-License-Identifier: MIT
// Plain readers behind a backend that answers at once and counts.
#pragma once

#include "transport/usb_backend.h"

namespace zel::bench {

struct ExchangeCount {
    long sends; // feature reports out
    long gets;  // feature reports in
};

ExchangeCount exchangeCount();

// Readers of one configuration whose field data have the old form; each other byte is 0.
const UsbBackend& plainReaders();
void attachPlainReaders(int number);

// Attaches so many and lets the library connect to them; whether it found them all.
bool connectPlainReaders(int number);

} // namespace zel::bench
