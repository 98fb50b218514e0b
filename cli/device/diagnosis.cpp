// SPDX-License-Identifier: MIT
// Says in words why a reader can't be opened, and what helps.
#include "cli/device/diagnosis.h"

#include <algorithm>
#include <fmt/format.h>

namespace zel::cli {

namespace {

constexpr char kReplug[] = "unplug it and plug it in again";

Failure explain(const SystemReader& reader) {
    const std::string& node = reader.node;
    switch (reader.access) {
    case Access::Denied:
        return {ExitCode::NoPermission, "no permission to open the reader " + node,
                udevHint(reader.id), node};
    case Access::NoNode:
        return {ExitCode::NoDevice,
                "the system lists a reader, but its device node " + node + " is missing",
                fmt::format("{}, or pass the node into the container", kReplug), node};
    case Access::Open:
    case Access::Refused:
        break;
    }
    return {ExitCode::NoDevice, "the reader " + node + " can't be opened", kReplug, node};
}

bool isBlocked(const SystemReader& reader) { return reader.access != Access::Open; }

} // namespace

Failure explainNoReader(const std::vector<SystemReader>& readers) {
    if (readers.empty())
        return {ExitCode::NoDevice, "no reader found",
                "plug one in, or add --sim to try a simulated one", ""};
    const auto blocked = std::find_if(readers.begin(), readers.end(), isBlocked);
    return explain(blocked == readers.end() ? readers.front() : *blocked);
}

std::vector<std::string> warningsAbout(const std::vector<SystemReader>& readers) {
    std::vector<std::string> warnings;
    for (const SystemReader& reader : readers)
        if (isBlocked(reader))
            warnings.push_back("warning: " + asLine(explain(reader)));
    return warnings;
}

} // namespace zel::cli
