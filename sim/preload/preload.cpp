// SPDX-License-Identifier: MIT
// Preloaded into an application, puts simulated devices in the place of real ones:
//     LD_PRELOAD=libzelsim.so application
// They are those of the simulator that ZELSIM_SOCKET names, or of the scenario of ZELSIM_SCENARIO;
// without either there is the demonstration reader, in the application itself.
#include "sim/demo/bench.h"
#include "sim/link/endpoint.h"
#include "sim/preload/clients.h"
#include "sim/preload/exchange.h"
#include "sim/preload/private_server.h"
#include "transport/line_opener.h"

#include <cstdio>
#include <cstdlib>

namespace zel::sim {

namespace {

const char* variable(const char* name) {
    const char* const value = std::getenv(name);
    return value && *value ? value : nullptr;
}

extern "C" {
static int openLine(const char* path) { return openRemoteLine(path); }
}

bool installRemote() {
    CPort_UseOpener(openLine);
    return UsbDriver_UseBackend(&remoteBackend()) != 0;
}

__attribute__((constructor)) void installAtLoad() {
    const bool isRemote = variable(kSocketVariable) || variable("ZELSIM_SCENARIO");
    if (!(isRemote ? installRemote() : installDemo()))
        std::fputs("zelsim: the library already holds a device; the simulator isn't in use\n",
                   stderr);
}

} // namespace

std::string simulatorSocket() {
    if (const char* const socket = variable(kSocketVariable))
        return socket;
    static const std::string started = startPrivateServer(variable("ZELSIM_SCENARIO"));
    return started;
}

} // namespace zel::sim
