// SPDX-License-Identifier: MIT
// `zeltag firmware check`: what a firmware file is for, and whether the reader would take it.
#include "cli/command/command.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/firmware/firmware_file.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

// What is known of the reader, as far as there is one.
struct Finding {
    std::optional<Device> device;
    std::optional<Refusal> refusal;
    Outcome failure;
};

Finding findingOn(const FirmwareFile& file, const Options& options) {
    if (auto failure = demandUsb(options, "the check against a reader"))
        return {{}, {}, failure};
    const Connection connection(options);
    if (connection.failure())
        return {{}, {}, connection.failure()};
    Finding finding = {activeDevice(), {}, whyNoFirmware()};
    if (finding.failure)
        return finding;
    finding.refusal = refusalOf(file);
    if (finding.refusal)
        finding.failure = explain(*finding.refusal, file);
    return finding;
}

std::string orDash(const std::string& text) { return text.empty() ? "-" : text; }

void print(const FirmwareFile& file, Output& output) {
    output.line(fmt::format("file      {}, checksum {} holds", file.path, file.checksum));
    output.line(fmt::format("firmware  {}", orDash(file.name)));
    output.line(fmt::format("family    {}", orDash(file.family())));
    output.line(fmt::format("micro     {}", file.micro < 0 ? "-" : std::to_string(file.micro)));
    output.line(fmt::format("lines     {}", file.lines));
}

// A refused file has its rule and its failure in the same object.
Json toJson(const FirmwareFile& file, const Finding& finding) {
    Json object = {{"path", file.path},
                   {"checksum", file.checksum},
                   {"firmware", toJson(file)},
                   {"device", finding.device ? toJson(*finding.device) : Json()},
                   {"taken", finding.device ? Json(!finding.failure) : Json()}};
    if (finding.refusal)
        object["rule"] = {{"number", finding.refusal->number}, {"text", finding.refusal->text}};
    if (finding.failure)
        object.update(Json::parse(asJson(*finding.failure)));
    return object;
}

class FirmwareCheckCommand : public Command {
public:
    CommandText text() const override {
        return {"firmware check", "Firmware", "Check whether a reader would take a firmware file",
                "zeltag firmware check examples/firmware.hex --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file; nothing is sent of it")
            ->option_text(" ")
            ->required();
    }

    Outcome run(const Options& options, Output& output) override {
        const auto read = readFirmwareFile(path_);
        if (const auto* const failure = std::get_if<Failure>(&read))
            return *failure;
        const auto& file = std::get<FirmwareFile>(read);
        return options.json ? tellJson(file, options, output) : tell(file, options, output);
    }

private:
    static Outcome tell(const FirmwareFile& file, const Options& options, Output& output) {
        print(file, output);
        const Finding finding = findingOn(file, options);
        if (!finding.failure)
            output.line(fmt::format("reader    {} would take it", finding.device->name));
        return finding.failure;
    }

    // The failure is told here: one object holds all.
    static Outcome tellJson(const FirmwareFile& file, const Options& options, Output& output) {
        const Finding finding = findingOn(file, options);
        if (finding.failure)
            warn(asLine(*finding.failure));
        output.object(toJson(file, finding));
        return finding.failure ? alreadyTold(finding.failure->exit) : Outcome();
    }

    std::string path_;
};

} // namespace

std::unique_ptr<Command> command::firmware_check() {
    return std::make_unique<FirmwareCheckCommand>();
}

} // namespace zel::cli
