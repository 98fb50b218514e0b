// SPDX-License-Identifier: MIT
// `zeltag list`: the readers that are there.
#include "cli/command.h"
#include "cli/connection.h"
#include "cli/device.h"
#include "cli/diagnosis.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

struct Row {
    Device device;
    std::string product;
    std::optional<int> luid; // unknown until the library has read it from the device
};

Row activeRow() {
    Row row{activeDevice(), activeProduct(), {}};
    if (ReadCfg() == 1)
        row.luid = static_cast<std::uint16_t>(GetLUID());
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

void printTable(const std::vector<Row>& rows, Output& output) {
    std::size_t width = 4;
    for (const Row& row : rows)
        width = std::max(width, row.device.name.size());
    output.line(
        fmt::format("{:>5}  {:{}}  {:7}  {:>5}", "INDEX", "NAME", width, "PRODUCT", "LUID"));
    for (const Row& row : rows)
        output.line(fmt::format("{:>5}  {:{}}  {:7}  {:>5}", row.device.index, row.device.name,
                                width, row.product, row.luid ? std::to_string(*row.luid) : "-"));
}

void printJson(const std::vector<Row>& rows, Output& output) {
    Json devices = Json::array();
    for (const Row& row : rows) {
        Json device = toJson(row.device);
        device["product"] = row.product;
        device["luid"] = row.luid ? Json(*row.luid) : Json();
        devices.push_back(device);
    }
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
        if (!options.sim)
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
