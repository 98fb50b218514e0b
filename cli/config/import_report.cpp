// SPDX-License-Identifier: MIT
// The lines, the table and the object that tell of an import.
#include "cli/config/import_report.h"

#include "cli/command/table.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

std::string where(const RefusedRecord& refused, const Import& import) {
    const std::string name = recordName(refused.record);
    return import.configurations == 1
               ? name
               : fmt::format("{} of configuration {}", name, refused.configuration);
}

const char* resultOf(const Import& import, const ImportOptions& options) {
    if (import.failure)
        return "failed";
    if (!import.refused.empty())
        return "refused in part";
    if (import.changes.empty())
        return "unchanged";
    return options.dryRun ? "would change" : "written";
}

std::string changesOf(const Import& import) {
    return import.failure ? "-" : std::to_string(import.changes.size());
}

Json jsonOf(const RefusedRecord& refused) {
    return {{"config", refused.configuration},
            {"record", recordName(refused.record)},
            {"reason", asLine(refused.why)}};
}

} // namespace

bool failed(const Import& import) { return import.failure || !import.refused.empty(); }

void warnOf(const Import& import, const ImportOptions& options) {
    for (const std::string& remark : import.remarks)
        warn(fmt::format("warning: {}: {}", options.name, remark));
    for (const RefusedRecord& refused : import.refused)
        warn(fmt::format("{} isn't imported into {}: {}", where(refused, import),
                         import.device.name, asLine(refused.why)));
}

void warnOfFailure(const Import& import) {
    if (import.failure)
        warn(asLine(*import.failure));
}

void printPlan(const Import& import, Output& output) {
    print(import.changes, import.configurations > 1, output);
}

void printOutcome(const Import& import, const ImportOptions& options, Output& output) {
    if (import.failure)
        return;
    print(keptOtherwise(import.changes), import.configurations > 1, output);
    if (options.dryRun)
        output.line("nothing was written: --dry-run");
    else if (!import.written)
        output.line("nothing was written: no value is new");
    else
        output.line(import.changes.size() == 1
                        ? "1 change was written"
                        : fmt::format("{} changes were written", import.changes.size()));
}

void printTable(const std::vector<Import>& imports, const ImportOptions& options, Output& output) {
    Table table({{"NAME"}, {"RESULT", Table::Side::Left, 15}, {"CHANGES", Table::Side::Right}});
    for (const Import& import : imports)
        table.add({import.device.name, resultOf(import, options), changesOf(import)});
    table.print(output);
}

Json toJson(const Import& import, const ImportOptions& options) {
    Json json = {{"device", toJson(import.device)}, {"result", resultOf(import, options)},
                 {"written", import.written},       {"changes", toJson(import.changes)},
                 {"refused", Json::array()},        {"remarks", import.remarks}};
    for (const RefusedRecord& refused : import.refused)
        json["refused"].push_back(jsonOf(refused));
    if (import.failure)
        json["error"] = Json::parse(asJson(*import.failure)).at("error");
    return json;
}

} // namespace zel::cli
