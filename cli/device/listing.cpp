// SPDX-License-Identifier: MIT
// The table and the object of the readers.
#include "cli/device/listing.h"

#include "cli/command/table.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/description.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

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
    using enum Table::Side;
    Table table({{"INDEX", Right},
                 {"NAME"},
                 {"PRODUCT"},
                 {"LUID", Right, 5},
                 {"FIRMWARE"},
                 {"CONFIGS", Right}});
    for (const Row& row : rows)
        table.add({std::to_string(row.device.index), nameAndPath(row.device), row.product,
                   orDash(row.luid), asText(row.firmware), orDash(row.configurations)});
    table.print(output);
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

} // namespace

void printListing(const Options& options, Output& output) {
    const auto rows = rowsOf(options);
    options.json ? printJson(rows, output) : printTable(rows, output);
}

} // namespace zel::cli
