// SPDX-License-Identifier: MIT
// Replies of a network bridge. An input is the host's address, then the reply.
#include "fuzz/target.h"
#include "transport/bridge_probe.h"

using namespace zel;
using namespace zel::fuzz;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Ipv4 host = {};
    input.fill(host);
    Reply reply = noReply();
    input.fill(reply);
    const bool isFirst = isFirstReply(reply, host);
    const bool isSecond = isSecondReply(reply);
    require(!isFirst || !isSecond);
    require(!isSecond || macOf(reply)[0] == 0);
    host[0] ^= 1;
    require(!isFirst || !isFirstReply(reply, host));
    return 0;
}
