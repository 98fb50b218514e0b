// SPDX-License-Identifier: MIT
// `zeltag config import`: loads a template file into a reader, or into all of them.
#include "cli/command/command.h"
#include "cli/command/interrupt.h"
#include "cli/config/import_report.h"
#include "cli/config/stripe_file.h"
#include "cli/config/template_file.h"
#include "cli/device/connection.h"
#include "cli/file/input_file.h"
#include "frame/zelTagAPI.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

class ConfigImportCommand : public Command {
public:
    CommandText text() const override {
        return {"config import", "Configure", "Load settings from a file",
                "zeltag config import settings.txt --dry-run --sim"};
    }

    void addOptions(CLI::App& app) override {
        app.add_option("FILE", import_.name, "A file of `zeltag config export`, edited or not")
            ->option_text(" ")
            ->required();
        app.add_flag("--sealed", import_.sealed, "Refuse the file unless its checksum holds");
        app.add_flag("--dry-run", import_.dryRun, "Show what would change and write nothing");
        app.add_flag("--all", all_, "Load it into every reader, also behind one that fails");
    }

    Outcome run(const Options& options, Output& output) override {
        if (all_ && options.device)
            return Failure{ExitCode::Usage, "--all and --device exclude each other",
                           "give one of them", ""};
        if (auto failure = whyUnusable())
            return failure;
        warnOfBrokenSeal();
        const Connection connection(options, all_ ? Need::Each : Need::Change);
        if (connection.failure())
            return orAll(*connection.failure());
        return all_ ? importIntoAll(options, output) : importIntoOne(options, output);
    }

private:
    Outcome whyUnusable() const {
        if (import_.sealed && isStripeFile(import_.name))
            return noSealedStripeFile();
        if (auto failure = import_.sealed ? whyDamaged(import_.name, FileKind::Template)
                                          : whyUnreadable(import_.name))
            return failure;
        const auto told = configurationsIn(import_.name);
        const auto* const failure = std::get_if<Failure>(&told);
        return failure ? Outcome(*failure) : Outcome();
    }

    // A file that was changed on purpose is loaded; who wants the seal to hold says so.
    void warnOfBrokenSeal() const {
        if (import_.sealed || isStripeFile(import_.name) || !hasTrailer(textOf(import_.name)))
            return;
        if (const auto failure = whyDamaged(import_.name, FileKind::Template))
            warn("warning: " + failure->message + "; --sealed refuses such a file");
    }

    // There are several readers and none was chosen.
    static Failure orAll(Failure failure) {
        if (failure.exit == ExitCode::Usage)
            failure.hint += ", or take all of them with --all";
        return failure;
    }

    Outcome importIntoOne(const Options& options, Output& output) const {
        Import import = planImport(import_);
        warnOf(import, import_);
        if (!options.json)
            printPlan(import, output);
        carryOut(import, import_);
        if (options.json)
            output.object(toJson(import, import_));
        else
            printOutcome(import, import_, output);
        warnOfFailure(import);
        if (import.failure)
            return alreadyTold(import.failure->exit);
        return import.refused.empty() ? Outcome() : alreadyTold(ExitCode::Failed);
    }

    // Ctrl-C lets the reader under way finish: half a configuration is worse than none.
    Outcome importIntoAll(const Options& options, Output& output) const {
        catchInterrupts();
        std::vector<Import> imports;
        for (int index = 0; index < GetDevCnt() && !interrupted(); ++index) {
            SetActDev(static_cast<short>(index));
            imports.push_back(planImport(import_));
            importOne(imports.back(), options, output);
        }
        options.json ? printJson(imports, output) : printTable(imports, import_, output);
        if (interrupted())
            return interruption();
        return std::any_of(imports.begin(), imports.end(), failed)
                   ? Outcome(alreadyTold(ExitCode::Failed))
                   : Outcome();
    }

    void importOne(Import& import, const Options& options, Output& output) const {
        const bool isTold = !options.json && !import.changes.empty();
        warnOf(import, import_);
        if (isTold) {
            output.line(import.device.name);
            printPlan(import, output);
        }
        carryOut(import, import_);
        if (isTold) {
            print(keptOtherwise(import.changes), import.configurations > 1, output);
            output.line("");
        }
        warnOfFailure(import);
    }

    void printJson(const std::vector<Import>& imports, Output& output) const {
        Json list = Json::array();
        for (const Import& import : imports)
            list.push_back(toJson(import, import_));
        output.object(Json{{"path", import_.name}, {"devices", list}});
    }

    ImportOptions import_;
    bool all_ = false;
};

} // namespace

std::unique_ptr<Command> command::config_import() {
    return std::make_unique<ConfigImportCommand>();
}

} // namespace zel::cli
