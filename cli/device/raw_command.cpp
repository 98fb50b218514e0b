// SPDX-License-Identifier: MIT
// `zeltag raw`: sends a report of the user's choice and prints the reply.
#include "cli/command/command.h"
#include "cli/command/whole_number.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <array>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>
#include <span>

namespace zel::cli {

namespace {

constexpr std::size_t kReportSize = 8;
constexpr std::size_t kFrameSize = 5; // on a byte stream: class byte, instruction, three more

using Report = std::array<std::uint8_t, kReportSize>;

// Hexadecimal in either form: the bytes of a report are never written in another way.
std::optional<std::uint8_t> byteIn(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    return wholeNumber<std::uint8_t>(text, 16);
}

Failure noByte(const std::string& word) {
    return {ExitCode::Usage, fmt::format("\"{}\" is no byte", word),
            "write it in hexadecimal, such as 8F or 0x8F", ""};
}

Failure tooLong(std::size_t count, std::size_t most) {
    return {ExitCode::Usage,
            fmt::format("a {} has {} bytes, not {}", most == kFrameSize ? "frame" : "report", most,
                        count),
            fmt::format("give 1 to {}; those left out are zero", most), ""};
}

Outcome parse(const std::vector<std::string>& words, std::size_t most, Report& report) {
    if (words.size() > most)
        return tooLong(words.size(), most);
    for (std::size_t index = 0; index < words.size(); ++index) {
        const auto byte = byteIn(words[index]);
        if (!byte)
            return noByte(words[index]);
        report[index] = *byte;
    }
    return {};
}

// Byte by byte, since the result for the eighth tells a failed exchange from a reply of zeros.
bool exchange(const Report& report) {
    bool sent = SetRawPayload_index(0, 0) == 1;
    for (std::size_t index = 0; index < report.size(); ++index)
        sent = SetRawPayload_index(static_cast<short>(index + 1), report[index]) == 1;
    return sent;
}

// The library keeps a report behind the place of its ID; a stream's reply has none.
Report reply(bool isReport) {
    const std::size_t first = isReport ? 1 : 0;
    Report bytes;
    for (std::size_t index = 0; index < bytes.size(); ++index)
        bytes[index] =
            static_cast<std::uint8_t>(GetRawPayload_index(static_cast<short>(first + index)));
    return bytes;
}

Failure exchangeFailed(const Device& device) {
    return {ExitCode::Failed, "the exchange with " + device.name + " failed",
            "the reader may have taken the report: check its cable, then try `zeltag ping`",
            device.name};
}

std::string digitsOf(std::span<const std::uint8_t> bytes) {
    return fmt::format("{:02X}", fmt::join(bytes, " "));
}

class RawCommand : public Command {
public:
    CommandText text() const override {
        return {"raw", "Diagnose", "Send a report of up to eight bytes and print the reply",
                "zeltag raw 8A --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("BYTE", words_,
                       "The report, or up to five bytes of a frame with --port or --tcp, in "
                       "hexadecimal with or without 0x; bytes left out are zero")
            ->option_text("...")
            ->required();
    }

    Outcome run(const Options& options, Output& output) override {
        Report report = {};
        const std::size_t size = options.isUsb() ? kReportSize : kFrameSize;
        if (auto failure = parse(words_, size, report))
            return failure;
        const Connection connection(options, Need::Choice);
        if (connection.failure())
            return connection.failure();
        const Device device = activeDevice();
        if (!exchange(report))
            return exchangeFailed(device);
        tell(std::span(report).first(size), device, options, output);
        return {};
    }

private:
    static void tell(std::span<const std::uint8_t> sent, const Device& device,
                     const Options& options, Output& output) {
        const Report answer = reply(options.isUsb());
        if (options.json) {
            output.object(Json{{"device", toJson(device)}, {"sent", sent}, {"reply", answer}});
            return;
        }
        output.line("sent   " + digitsOf(sent));
        output.line("reply  " + digitsOf(answer));
    }

    std::vector<std::string> words_;
};

} // namespace

std::unique_ptr<Command> command::raw() { return std::make_unique<RawCommand>(); }

} // namespace zel::cli
