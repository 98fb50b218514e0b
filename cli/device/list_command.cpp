// SPDX-License-Identifier: MIT
// `zeltag list`: the readers that are there.
#include "cli/command/command.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/description.h"
#include "cli/device/device.h"
#include "cli/device/diagnosis.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

struct Row {
    Device device;
    std::string product;
    // Nothing for a reader whose configuration can't be read.
    std::optional<int> luid;
    std::optional<int> configurations;
    Firmware firmware;
};

Row activeRow() {
    Row row{activeDevice(), activeProduct(), {}, {}, {}};
    if (isTag() ? !isConfigurationRead() : checkSettings().has_value())
        return row;
    row.luid = static_cast<std::uint16_t>(GetLUID());
    row.configurations = GetMaxConfig() + 1;
    row.firmware = activeFirmware();
    return row;
}

std::vector<Row> rowsOf(const Options& options) {
    if (options.device)
        return {activeRow()};
    std::vector<Row> rows;
    for (int index = 0; index < GetDevCnt(); ++index) {
        SetActDev(static_cast<short>(index));
        rows.push_back(activeRow());
    }
    return rows;
}

std::string orDash(std::optional<int> number) { return number ? std::to_string(*number) : "-"; }

void printTable(const std::vector<Row>& rows, Output& output) {
    std::size_t name = 4;
    std::size_t firmware = 8;
    for (const Row& row : rows) {
        name = std::max(name, nameAndPath(row.device).size());
        firmware = std::max(firmware, asText(row.firmware).size());
    }
    const auto line = [&](const auto&... column) {
        output.line(fmt::format("{:>5}  {:{}}  {:7}  {:>5}  {:{}}  {:>7}", column...));
    };
    line("INDEX", "NAME", name, "PRODUCT", "LUID", "FIRMWARE", firmware, "CONFIGS");
    for (const Row& row : rows)
        line(row.device.index, nameAndPath(row.device), name, row.product, orDash(row.luid),
             asText(row.firmware), firmware, orDash(row.configurations));
}

Json orNull(std::optional<int> number) { return number ? Json(*number) : Json(); }

Json toJson(const Row& row) {
    Json device = cli::toJson(row.device);
    device["product"] = row.product;
    device["luid"] = orNull(row.luid);
    device["firmware"] = Json{{"version", row.firmware.version}, {"file", row.firmware.file}};
    device["configurations"] = orNull(row.configurations);
    return device;
}

void printJson(const std::vector<Row>& rows, Output& output) {
    Json devices = Json::array();
    for (const Row& row : rows)
        devices.push_back(toJson(row));
    output.object(Json{{"devices", devices}});
}

class ListCommand : public Command {
public:
    CommandText text() const override {
        return {"list", "Readers", "List the readers", "zeltag list --sim"};
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        if (options.isUsb() && !options.sim)
            for (const std::string& warning : warningsAbout(systemReaders()))
                warn(warning);
        const auto rows = rowsOf(options);
        options.json ? printJson(rows, output) : printTable(rows, output);
        return {};
    }
};

} // namespace

std::unique_ptr<Command> command::list() { return std::make_unique<ListCommand>(); }

} // namespace zel::cli
