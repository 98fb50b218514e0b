// SPDX-License-Identifier: MIT
// Lists the commands by what a person wants, each group named on its first row.
#include "cli/main/help.h"

#include <fmt/format.h>

namespace zel::cli {

namespace {

constexpr std::size_t kHelpColumn = 24;

std::string rowsOf(const CLI::App& program) {
    std::string rows;
    std::string group;
    for (const CLI::App* const command :
         program.get_subcommands([](const CLI::App*) { return true; })) {
        const std::string& its = command->get_group();
        rows += fmt::format("{:10} {:9} {}\n", its == group ? "" : its, command->get_name(),
                            command->get_description());
        group = its;
    }
    return rows;
}

// Of the options that all commands share, without those of the program alone.
std::string sharedOptions(const CLI::App& program) {
    std::string words;
    for (const CLI::Option* const option : program.get_options()) {
        const std::string& name = option->get_lnames().front();
        if (name == "help" || name == "version")
            continue;
        words += " --" + name;
    }
    return words;
}

class ScreenFormatter : public CLI::Formatter {
public:
    ScreenFormatter() { column_width(kHelpColumn); }

    std::string make_help(const CLI::App* app, std::string name,
                          CLI::AppFormatMode mode) const override {
        if (app->get_parent())
            return Formatter::make_help(app, std::move(name), mode);
        return fmt::format("{}\nUsage: zeltag COMMAND [OPTIONS]\n\n{}\n{}\n{}\n",
                           app->get_description(), rowsOf(*app),
                           "With each command:" + sharedOptions(*app), app->get_footer());
    }
};

} // namespace

std::shared_ptr<CLI::Formatter> screenFormatter() { return std::make_shared<ScreenFormatter>(); }

} // namespace zel::cli
