// SPDX-License-Identifier: MIT
// `zeltag dump`: writes all reports of a reader to a file, for support.
#include "cli/command/command.h"
#include "cli/command/file_progress.h"
#include "cli/command/interrupt.h"
#include "cli/command/replacement_file.h"
#include "cli/device/configuration.h"
#include "cli/device/connection.h"
#include "cli/device/device.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

constexpr char kMark[] = "Rx: ";
constexpr int kReports = 15;    // of a configuration
constexpr int kReportSize = 58; // two lines of a mark and eight bytes

class DumpCommand : public Command {
public:
    CommandText text() const override {
        return {"dump", "Diagnose", "Write all reports of a reader to a file",
                "zeltag dump reader.txt --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", path_, "The file; one that exists is replaced when all went well")
            ->option_text(" ")
            ->required();
    }

    Outcome run(const Options& options, Output& output) override {
        if (auto failure = demandUsb(options, "`zeltag dump`"))
            return failure;
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        catchInterrupts();
        ReplacementFile file(path_);
        if (file.failure())
            return file.failure();
        const int configurations = GetMaxConfig() + 1;
        const bool dumped = dumpTo(file.temporary(), configurations);
        if (interrupted())
            return interruption();
        if (!dumped)
            return whyFailed(file, configurations);
        const int reports = partsIn(file.temporary(), kMark);
        if (auto failure = file.keep())
            return failure;
        tell(configurations, reports, options, output);
        return {};
    }

private:
    static bool dumpTo(const std::string& path, int configurations) {
        const FileProgress progress(path, {kMark, "reports", configurations * kReports});
        return DumpRawFeatureReports(path.c_str()) == 1;
    }

    Failure whyFailed(const ReplacementFile& file, int configurations) const {
        const int size = configurations * kReports * kReportSize;
        if (auto failure = file.tryToFill(static_cast<std::size_t>(size)))
            return *failure;
        const Device device = activeDevice();
        return {ExitCode::Failed,
                fmt::format("a report of {} failed: {} was not written", device.name, path_),
                "check its cable, then try `zeltag ping`", device.name};
    }

    void tell(int configurations, int reports, const Options& options, Output& output) const {
        const Device device = activeDevice();
        if (options.json)
            output.object(Json{{"device", toJson(device)},
                               {"path", path_},
                               {"configurations", configurations},
                               {"reports", reports}});
        else
            output.line(fmt::format("{}  {} reports of {}", path_, reports, device.name));
    }

    std::string path_;
};

} // namespace

std::unique_ptr<Command> command::dump() { return std::make_unique<DumpCommand>(); }

} // namespace zel::cli
