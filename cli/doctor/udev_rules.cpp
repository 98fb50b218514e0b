// SPDX-License-Identifier: MIT
// Goes through the rule files and judges the lines that name the readers.
#include "cli/doctor/udev_rules.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <map>

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* kFolders[] = {"/etc/udev/rules.d", "/run/udev/rules.d",
                                    "/usr/lib/udev/rules.d", "/lib/udev/rules.d"};
constexpr int kSeatRule = 73; // the file that carries uaccess out is 73-seat-late.rules

std::string inLowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

// What stands in quotes behind the key, blanks left out; empty: nothing does.
std::string valueOf(const std::string& rule, const std::string& key) {
    const std::size_t at = rule.find(key + "\"");
    if (at == rule.npos)
        return "";
    const std::size_t begin = at + key.size() + 1;
    return rule.substr(begin, rule.find('"', begin) - begin);
}

bool hasHidraw(const std::string& rule) {
    return rule.find("SUBSYSTEM==\"hidraw\"") != rule.npos ||
           rule.find("KERNEL==\"hidraw") != rule.npos;
}

bool setsAccess(const std::string& rule) {
    return rule.find("TAG+=\"uaccess\"") != rule.npos || rule.find("GROUP=\"") != rule.npos ||
           rule.find("MODE=\"") != rule.npos;
}

// 0 where the rule tells none, or one that isn't hexadecimal.
int idIn(const std::string& rule, const std::string& key) {
    return static_cast<int>(std::strtol(valueOf(rule, key).c_str(), nullptr, 16));
}

// Rules that only keep other programs away say nothing of access.
bool isAbout(const std::string& rule, const ReaderId& reader) {
    const ReaderId named = {idIn(rule, "idVendor}=="), idIn(rule, "idProduct}==")};
    const bool isKnown = isProductId(named);
    return named.vendor == reader.vendor && (hasHidraw(rule) || setsAccess(rule)) &&
           (named == reader || !isKnown);
}

int numberOf(const std::string& file) {
    int number = 0;
    for (const char digit : file) {
        if (digit < '0' || digit > '9')
            return number;
        number = number * 10 + (digit - '0');
    }
    return number;
}

std::string faultOf(const std::string& rule, const std::string& file) {
    const bool hasSeats = rule.find("TAG+=\"uaccess\"") != rule.npos;
    const std::string product = valueOf(rule, "idProduct}==");
    const std::string ids = valueOf(rule, "idVendor}==") + product;
    if (ids != inLowerCase(ids))
        return "the ids must be in lower-case hexadecimal: udev compares them as text";
    if (!product.empty() && !isProductId({idIn(rule, "idVendor}=="), idIn(rule, "idProduct}==")}))
        return fmt::format("no reader is the product {}", product);
    if (!hasHidraw(rule))
        return "it isn't for hidraw nodes: it lacks SUBSYSTEM==\"hidraw\"";
    if (!setsAccess(rule))
        return "it sets neither TAG+=\"uaccess\" nor GROUP nor MODE";
    if (hasSeats && numberOf(file) >= kSeatRule)
        return fmt::format("uaccess has an effect only in a file whose number is below {}",
                           kSeatRule);
    return "";
}

// A backslash at its end joins a line with the next one.
void takeRules(const fs::path& path, const std::string& told, const std::vector<ReaderId>& ids,
               std::vector<UdevRule>& rules) {
    std::ifstream file(path);
    std::string rule;
    int number = 0;
    int first = 1;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const bool goesOn = line.ends_with('\\');
        rule += goesOn ? line.substr(0, line.size() - 1) : line;
        if (goesOn)
            continue;
        const auto isMeant = [&rule](const ReaderId& id) { return isAbout(rule, id); };
        if (!rule.starts_with('#') && std::any_of(ids.begin(), ids.end(), isMeant))
            rules.push_back({fmt::format("{}:{}", told, first), faultOf(rule, path.filename()),
                             rule.find("TAG+=\"uaccess\"") != rule.npos});
        rule.clear();
        first = number + 1;
    }
}

} // namespace

std::vector<UdevRule> rulesAboutReaders(const Machine& machine, const std::vector<ReaderId>& ids) {
    std::map<std::string, std::string> files; // by name; the first folder counts
    for (const char* const folder : kFolders) {
        std::error_code error;
        for (fs::directory_iterator entry(machine.at(folder), error), end; !error && entry != end;
             entry.increment(error))
            if (entry->path().extension() == ".rules")
                files.emplace(entry->path().filename(), folder);
    }
    std::vector<UdevRule> rules;
    for (const auto& [name, folder] : files) {
        const std::string told = folder + "/" + name;
        takeRules(machine.at(told), told, ids, rules);
    }
    return rules;
}

} // namespace zel::cli
