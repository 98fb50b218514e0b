// SPDX-License-Identifier: MIT
// Whether a magnetic stripe reader answers.
#include "base/pause.h"
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/state/state.h"
#include "transport/port.h"

#include <unistd.h>

using namespace zel;

namespace {

constexpr useconds_t kWakePause = 30'000; // µs
constexpr useconds_t kEndPause = 2'000;

// Two carriage returns end whatever the reader took for the beginning of a command.
void wake(CPort* port) {
    pauseFor(kWakePause);
    if (port) {
        port->Write("\r\r", 2);
        port->FlushTx();
    }
    pauseFor(kWakePause);
    if (port)
        port->FlushRx();
}

} // namespace

int zelband_IsDevicePresent() {
    const tsDevDat& record = activeRecord();
    const bool isOnLine = record.iDevType == 1;
    if (isOnLine)
        wake(record.pPort);
    band::Frame reply;
    const bool isPresent = band::askPartNumber(reply);
    if (isOnLine)
        pauseFor(kEndPause);
    return isPresent ? 1 : 0;
}
