// SPDX-License-Identifier: MIT
// The network bridge that a user names: where it is, and why no reader answers behind it.
#pragma once

#include "cli/command/address.h"
#include "cli/command/failure.h"

#include <chrono>
#include <string>
#include <variant>

namespace zel::cli {

// The first IPv4 address of a host. A failure where nobody knows the name, or where the address
// stands for a whole network: the library would ask each host of it.
std::variant<Ipv4, Failure> addressOf(const std::string& host);

// The errno of a TCP connect that ends within the time; 0 when somebody took the connection, which
// is closed again. The library's own connect waits for minutes where a host doesn't answer.
int tryConnect(const Ipv4& address, std::uint16_t port, std::chrono::milliseconds time);

// Why a host takes no connection.
Failure explainConnect(const Endpoint& endpoint, int error);

// Makes the bridge the one that the library's next connect goes to, once it took a connection.
Outcome useBridge(const Endpoint& endpoint, Ipv4& address);

// Why no reader answered behind a bridge that takes connections.
Failure explainSilentBridge(const Endpoint& endpoint);

} // namespace zel::cli
