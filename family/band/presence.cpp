// SPDX-License-Identifier: MIT
// Whether a magnetic stripe reader answers.
#include "family/band/band.h"
#include "family/band/frame.h"
#include "frame/state.h"
#include "transport/port.h"

#include <string_view>
#include <unistd.h>

using namespace zel;

namespace {

constexpr useconds_t kWakePause = 30'000; // µs
constexpr useconds_t kRetryPause = 25'000;
constexpr useconds_t kEndPause = 2'000;
constexpr std::string_view kQuery = "QRZ";
constexpr std::string_view kAnswer = "RRZ";

// Two carriage returns end whatever the reader took for the beginning of a command.
void wake(CPort* port) {
    usleep(kWakePause);
    if (port) {
        port->Write("\r\r", 2);
        port->FlushTx();
    }
    usleep(kWakePause);
    if (port)
        port->FlushRx();
}

bool answers() {
    band::Frame reply;
    return SendBandCmd(kQuery.data(), reply.data()) != 0 &&
           std::string_view(reply.data(), reply.size()).starts_with(kAnswer);
}

bool answersInTwo() {
    if (answers())
        return true;
    usleep(kRetryPause);
    return answers();
}

} // namespace

int zelband_IsDevicePresent() {
    const tsDevDat& record = activeRecord();
    const bool isOnLine = record.iDevType == 1;
    if (isOnLine)
        wake(record.pPort);
    const bool isPresent = answersInTwo();
    if (isOnLine)
        usleep(kEndPause);
    return isPresent ? 1 : 0;
}
