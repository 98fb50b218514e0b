// SPDX-License-Identifier: MIT
// Prints the manual page of zeltag, or its completion for a shell: part of the build alone.
#include "cli/command/failure.h"
#include "cli/config/words.h"
#include "cli/main/parser.h"
#include "cli/reference/reference.h"

#include <set>

namespace zel::cli {

namespace {

// Names of settings as they are typed: alone, and behind their record's name.
std::vector<std::string> settingNames() {
    std::set<std::string> names;
    for (const Word& word : allWords())
        if (word.kind != WordKind::pad)
            names.insert({word.name, fullName(word)});
    return {names.begin(), names.end()};
}

ValueWords valueWords() {
    ValueWords words = {{"NAME", settingNames()}};
    for (const std::string& name : words["NAME"])
        words["NAME=VALUE"].push_back(name + "=");
    return words;
}

const ManualText::Table kExitCodes = {
    {"0", "Done."},
    {"1", "The device or the library reported a failure."},
    {"2", "Nothing came in time: no card, no reply."},
    {"64", "Wrong usage."},
    {"65", "A file is damaged or refused."},
    {"66", "A file is missing."},
    {"69", "No device."},
    {"73", "Output can't be written."},
    {"77", "No permission."},
    {"130", "Interrupted."},
};

const ManualText::Table kFiles = {
    {"/usr/lib/udev/rules.d/70-zeltag.rules",
     "Lets who sits at the machine use the readers on USB; without the package zeltag-udev it is "
     "put into `/etc/udev/rules.d`."},
    {"zelTagVIDPID.txt",
     "The device filter list, looked for in the working directory: readers with other identities "
     "on USB."},
};

ManualText manualText(const char* version, const char* date) {
    return {version,
            date,
            {{"Exit status", kExitCodes}, {"Files", kFiles}},
            {"zelsim(1)", "zeltag-template(5)", "zeltag-firmware(5)", "zeltag-json(7)",
             "zelTagAPI(7)"}};
}

} // namespace

} // namespace zel::cli

// FORM VERSION DATE
int main(int argc, char** argv) {
    if (argc != 4)
        return 1;
    zel::cli::Parser parser;
    return !zel::cli::printReference(argv[1],
                                     zel::cli::outlineOf(parser.app(), zel::cli::valueWords()),
                                     zel::cli::manualText(argv[2], argv[3]));
}
