// SPDX-License-Identifier: MIT
// Which commands of a magnetic stripe reader neither carry nor fetch tracks or user fields.
#include "cli/trace/stripe_commands.h"

#include <algorithm>
#include <string_view>

namespace zel::cli {

namespace {

constexpr std::size_t kFrameSize = 24;
constexpr std::size_t kHead = 3; // of a command; of a reply: R or E, then the command's last two

constexpr std::string_view kHarmless[] = {"QRZ", "QSV", "QUP", "QS0", "QDD", "GQ0",
                                          "GS0", "GL0", "SS0", "SL0", "FR",  "FW",
                                          "FD",  "CD0", "CQ",  "BL",  "BS"};

bool isHarmless(ByteView bytes) {
    const std::string text(bytes.begin(), bytes.end());
    return std::any_of(std::begin(kHarmless), std::end(kHarmless),
                       [&](std::string_view start) { return text.starts_with(start); });
}

bool repliesTo(ByteView reply, ByteView command) {
    const bool hasHead = reply.size() >= kHead && command.size() >= kHead;
    return hasHead && (reply[0] == 'R' || reply[0] == 'E') && reply[1] == command[1] &&
           reply[2] == command[2];
}

Message asLine(Message message) {
    message.isText = true;
    return message;
}

} // namespace

bool isStripeFrame(ByteView bytes) { return bytes.size() == kFrameSize && bytes.back() == '\r'; }

// A fetch says which track and which chunk; anything else may carry a field's contents.
Message stripeCommand(ByteView bytes, std::string name, Bytes& command) {
    command.assign(bytes.begin(), bytes.end());
    const bool isFetch = !bytes.empty() && bytes[0] == 'G';
    if (isHarmless(bytes) || (isFetch && isStripeFrame(bytes)))
        return asLine(allShown(bytes, std::move(name)));
    return asLine(secretBehind(kHead, bytes, name.substr(0, kHead)));
}

Message stripeReply(ByteView bytes, const Bytes& command) {
    if (!repliesTo(bytes, command))
        return allSecret(bytes);
    return asLine(isHarmless(command) ? allShown(bytes) : secretBehind(kHead, bytes));
}

} // namespace zel::cli
