// SPDX-License-Identifier: MIT
// Fetches the card data and prints it, a block a line, with its text if it is one.
#include "cli/card/card_data.h"

#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>
#include <span>

namespace zel::cli {

namespace {

constexpr std::size_t kBlocks = 5;
constexpr std::size_t kBlockSize = 8;

using CardData = std::array<std::uint8_t, kBlocks * kBlockSize>;

CardData bytesRead() {
    CardData data;
    for (std::size_t index = 0; index < data.size(); ++index)
        data[index] = static_cast<std::uint8_t>(getActiveCardData_byte(static_cast<short>(index)));
    return data;
}

bool isEmpty(const CardData& data) {
    return std::all_of(data.begin(), data.end(), [](std::uint8_t byte) { return byte == 0; });
}

std::string textOf(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes)
        text += byte >= ' ' && byte <= '~' ? static_cast<char>(byte) : '.';
    return text;
}

void print(const CardData& data, Output& output) {
    for (std::size_t at = 0; at < data.size(); at += kBlockSize) {
        const auto block = std::span(data).subspan(at, kBlockSize);
        output.line(fmt::format("{:>2}  {:02X}  {}", at, fmt::join(block, " "), textOf(block)));
    }
}

} // namespace

Outcome readCardData(const Device& device, const Options& options, Output& output) {
    if (getActiveCardData() != 1)
        return deviceFailed("reading the card data of", "check its cable, then try `zeltag list`");
    const CardData data = bytesRead();
    if (isEmpty(data))
        return Failure{ExitCode::NothingCame, "no card data in " + device.name,
                       "hold a card to the reader and try again", device.name};
    if (options.json)
        output.object(Json{{"device", toJson(device)}, {"bytes", data}});
    else
        print(data, output);
    return {};
}

} // namespace zel::cli
