// SPDX-License-Identifier: MIT
// Goes through the rule files and judges the lines that name the readers.
#include "cli/doctor/udev_rules.h"

#include "frame/zelTagAPI.h"

#include <algorithm>
#include <cctype>
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

std::string idText(int id) { return fmt::format("{:04x}", id); }

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

bool isAboutReaders(const std::string& rule) {
    const std::string vendor = valueOf(inLowerCase(rule), "idvendor}==");
    return vendor == idText(ZELTAG_USB_VENDOR);
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
    if (!product.empty() && product != idText(ZELTAG_USB_PRODUCT))
        return fmt::format("it names the product {} and not {}", product,
                           idText(ZELTAG_USB_PRODUCT));
    if (rule.find("SUBSYSTEM==\"hidraw\"") == rule.npos &&
        rule.find("KERNEL==\"hidraw") == rule.npos)
        return "it isn't for hidraw nodes: it lacks SUBSYSTEM==\"hidraw\"";
    if (!hasSeats && rule.find("GROUP=\"") == rule.npos && rule.find("MODE=\"") == rule.npos)
        return "it sets neither TAG+=\"uaccess\" nor GROUP nor MODE";
    if (hasSeats && numberOf(file) >= kSeatRule)
        return fmt::format("uaccess has an effect only in a file whose number is below {}",
                           kSeatRule);
    return "";
}

// A backslash at its end joins a line with the next one.
void takeRules(const fs::path& path, const std::string& told, std::vector<UdevRule>& rules) {
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
        if (!rule.starts_with('#') && isAboutReaders(rule))
            rules.push_back({fmt::format("{}:{}", told, first), faultOf(rule, path.filename()),
                             rule.find("TAG+=\"uaccess\"") != rule.npos});
        rule.clear();
        first = number + 1;
    }
}

} // namespace

std::vector<UdevRule> rulesAboutReaders(const Machine& machine) {
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
        takeRules(machine.at(told), told, rules);
    }
    return rules;
}

} // namespace zel::cli
