// SPDX-License-Identifier: MIT
// Compares, tries in the library's memory, imports and compares again.
#include "cli/config/import.h"

#include "cli/config/change.h"
#include "cli/config/template_file.h"
#include "cli/config/untouched_memory.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "cli/device/failures.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <fmt/format.h>
#include <variant>

namespace zel::cli {

namespace {

constexpr char kImportAgain[] =
    "check its cable, then import the file again: a part may be written";

const Word* wordOf(const Difference& change) { return allSettings()[change.setting].word; }

bool isOf(const Difference& change, std::size_t configuration, std::size_t record) {
    return change.configuration == configuration && wordOf(change) &&
           wordOf(change)->record == record;
}

// A record marked as volatile would be sent.
Outcome tryRecord(const Import& import, std::size_t configuration, std::size_t record) {
    Values values = {};
    if (!readRecord(record, values))
        return explainRefusal(record, values);
    for (const Difference& change : import.changes)
        if (isOf(change, configuration, record) && !isVolatileMark(*wordOf(change)))
            values[wordOf(change)->index] = static_cast<std::int16_t>(*change.after);
    return writeRecord(record, values) ? Outcome() : explainRefusal(record, values);
}

void tryRecords(Import& import, std::size_t configuration) {
    const ChosenConfiguration chosen(static_cast<int>(configuration));
    for (std::size_t record = 0; record < recordCount(); ++record) {
        const auto changes = [&](const Difference& change) {
            return isOf(change, configuration, record);
        };
        if (std::none_of(import.changes.begin(), import.changes.end(), changes))
            continue;
        const auto refusal = tryRecord(import, configuration, record);
        if (!refusal)
            continue;
        import.refused.push_back({configuration, record, *refusal});
        std::erase_if(import.changes, changes);
    }
}

void findRefused(Import& import) {
    const UntouchedMemory memory;
    for (std::size_t i = 0; i < import.configurations; ++i)
        tryRecords(import, i);
}

void remark(Import& import, std::string text) { import.remarks.push_back(std::move(text)); }

// Field data of another form stay away, and so does an output format that the form doesn't have.
void remarkOnForm(Import& import, const Configurations& told, const Configurations& imported) {
    bool field = false;
    bool format = false;
    for (const Difference& left : compare(told, imported, Untold::Passes)) {
        const Setting& setting = allSettings()[left.setting];
        field = field || setting.isByte;
        format = format || setting.word;
    }
    if (field)
        remark(import, fmt::format("the field data aren't imported: those of {} have another form",
                                   import.device.name));
    if (format)
        remark(import, fmt::format("iExOutputFormat isn't imported: the field data of {} have none",
                                   import.device.name));
}

void remarkOnCount(Import& import, std::size_t told) {
    if (told > import.configurations)
        remark(import, fmt::format("{} has {} of the file's {} configurations: the others aren't "
                                   "imported",
                                   import.device.name, import.configurations, told));
    if (told < import.configurations)
        remark(import, fmt::format("the file has {} of the {} configurations of {}: the others "
                                   "stay as they are",
                                   told, import.configurations, import.device.name));
}

void plan(Import& import, const Configurations& told, const Configurations& imported) {
    const Configurations held = activeConfigurations();
    import.configurations = held.size();
    import.changes = compare(held, imported, Untold::Passes);
    remarkOnForm(import, told, imported);
    remarkOnCount(import, told.size());
    findRefused(import);
}

// The file of a magnetic stripe reader goes to the library's memory alone.
bool isSent() { return !isStripe() || WriteCfg() == 1; }

Outcome write(const ImportOptions& options) {
    const ChosenConfiguration chosen(std::nullopt); // a failed import leaves another one active
    showProgress("writing to " + activeDevice().name + ", which takes a moment");
    const char* const name = options.name.c_str();
    const bool isTaken =
        (options.sealed ? ReadDevCfgFromSecureFile(name) : ReadDevCfgFmFile(name)) == 1;
    return isTaken && isSent() ? Outcome() : deviceFailed("writing", kImportAgain);
}

Outcome prepare(Import& import, const ImportOptions& options) {
    if (auto failure = checkSettings())
        return failure;
    if (auto failure = whyUnfit(options.name))
        return failure;
    const auto told = configurationsIn(options.name);
    if (const auto* const failure = std::get_if<Failure>(&told))
        return *failure;
    const auto imported = importedConfigurations(options.name);
    if (const auto* const failure = std::get_if<Failure>(&imported))
        return *failure;
    plan(import, std::get<Configurations>(told), std::get<Configurations>(imported));
    return {};
}

Outcome finish(Import& import, const ImportOptions& options) {
    if (options.dryRun || import.changes.empty())
        return {};
    if (auto failure = write(options))
        return failure;
    if (auto failure = readBack())
        return failure;
    import.written = true;
    fillKept(import.changes, activeConfigurations());
    return {};
}

} // namespace

Import planImport(const ImportOptions& options) {
    Import import;
    import.device = activeDevice();
    import.failure = prepare(import, options);
    return import;
}

void carryOut(Import& import, const ImportOptions& options) {
    if (!import.failure)
        import.failure = finish(import, options);
}

} // namespace zel::cli
