// SPDX-License-Identifier: MIT
// Fetches the queued identifier and the words about it.
#include "cli/card/queued_id.h"

#include "cli/card/identifier.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

// Indexes of GetQueuedID_index() behind the identifier. Only the age has a known meaning.
constexpr short kWord = 32;
constexpr short kAge = 33;
constexpr short kFirstByte = 34;
constexpr short kSecondByte = 35;

constexpr int kBitsPerByte = 8;

// The entry tells no bit count: its bytes up to the last one that isn't zero count.
Identifier queuedIdentifier() {
    Identifier identifier;
    for (std::size_t index = 0; index < Identifier::kSize; ++index) {
        const auto byte = static_cast<std::uint8_t>(GetQueuedID_index(static_cast<short>(index)));
        identifier.bytes[index] = byte;
        if (byte != 0)
            identifier.bits = static_cast<int>(index + 1) * kBitsPerByte;
    }
    return identifier;
}

void print(const Identifier& identifier, const Device& device, Output& output) {
    output.line(fmt::format("{:8} {}", "name", device.name));
    output.line(fmt::format("{:8} 0x{}", "id", hexOf(identifier)));
    output.line(fmt::format("{:8} {}", "age", GetQueuedID_index(kAge)));
    output.line(fmt::format("{:8} {}", "word 32", GetQueuedID_index(kWord)));
    for (const short index : {kFirstByte, kSecondByte})
        output.line(fmt::format("byte {}  {}", index, GetQueuedID_index(index)));
}

Json jsonOf(const Identifier& identifier, const Device& device) {
    return {{"device", toJson(device)},
            {"id", hexOf(identifier)},
            {"decimal", decimalOf(identifier)},
            {"bytes", identifier.bytes},
            {"age", GetQueuedID_index(kAge)},
            {"word_32", GetQueuedID_index(kWord)},
            {"byte_34", GetQueuedID_index(kFirstByte)},
            {"byte_35", GetQueuedID_index(kSecondByte)}};
}

} // namespace

// Sets no flag: what they ask of the reader isn't known, and a look must change nothing.
Outcome readQueuedId(const Device& device, const Options& options, Output& output) {
    if (GetQueuedID(0, 0) != 1)
        return deviceFailed("reading the queue of", "check its cable, then try `zeltag list`");
    const Identifier identifier = queuedIdentifier();
    if (identifier.bits == 0)
        return Failure{ExitCode::NothingCame, "nothing is queued on " + device.name,
                       "hold a card to the reader and try again", device.name};
    if (options.json)
        output.object(jsonOf(identifier, device));
    else
        print(identifier, device, output);
    return {};
}

} // namespace zel::cli
