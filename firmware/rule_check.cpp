// SPDX-License-Identifier: MIT
// Reads a firmware file's header and runs the rules on it.
#include "firmware/header_lines.h"
#include "firmware/messages.h"
#include "firmware/reader_names.h"
#include "firmware/rules.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

using namespace zel::firmware;

namespace {

constexpr std::ptrdiff_t kOverride = 0;
constexpr std::ptrdiff_t kCurrentPs = 4;
constexpr std::ptrdiff_t kNewPs = 2; // behind the section's line
constexpr std::ptrdiff_t kNewBoot = 3;
constexpr std::ptrdiff_t kNewName = 4;
constexpr std::size_t kShortestName = 9;
constexpr char kSection[] = "#NEW FW";

ReaderBlock blockOf(const HeaderLines& lines) {
    return {lines, readerPartNumber(), readerFirmware()};
}

// Whether all lines that the rules read are there: with the new firmware's name line 4 is.
bool isComplete(const HeaderLines& lines, int section) {
    return section >= 0 && section + kNewName < std::ssize(lines);
}

} // namespace

// The operations take copies: a class that overrides one may change or keep them.
// NOLINTBEGIN(performance-unnecessary-value-param)

std::vector<std::string> BootloadRules::storeFile(std::string name) {
    std::ifstream file(name);
    if (!file.is_open())
        refuse(218);
    return headerLinesOf(file);
}

int BootloadRules::getOvrValue(std::vector<std::string> lines) {
    return static_cast<int>(std::strtol(valueAt(lines, kOverride).c_str(), nullptr, 10));
}

std::string BootloadRules::getPSValueForCurrentReader(std::vector<std::string> lines) {
    return valueAt(lines, kCurrentPs);
}

std::string BootloadRules::getFWBLValueForCurrentReader(std::vector<std::string> lines) {
    return blockOf(lines).value(-1);
}

std::string BootloadRules::getCPU1AP1ValueForCurrentReader(std::vector<std::string> lines) {
    return blockOf(lines).value(1);
}

std::string BootloadRules::getCPU1BL1ValueForCurrentReader(std::vector<std::string> lines) {
    return blockOf(lines).value(2);
}

int BootloadRules::getIndexNewFW(std::vector<std::string> lines) {
    const auto found = std::find(lines.begin(), lines.end(), kSection);
    return found == lines.end() ? -1 : static_cast<int>(found - lines.begin());
}

std::string BootloadRules::getPSValueForNewFW(std::vector<std::string> lines, int index) {
    return valueAt(lines, index + kNewPs);
}

std::string BootloadRules::getFWBLValueForNewFW(std::vector<std::string> lines, int index) {
    return valueAt(lines, index + kNewBoot);
}

std::string BootloadRules::getFNValueForNewFW(std::vector<std::string> lines, int index) {
    return valueAt(lines, index + kNewName);
}

bool BootloadRules::getFNValueForReaderFW(std::vector<std::string> lines, int index) {
    const std::string wanted = ' ' + readerFirmware();
    const auto end = lines.begin() + std::clamp<std::ptrdiff_t>(index, 0, std::ssize(lines));
    const bool found = std::any_of(
        lines.begin(), end, [&](const std::string& line) { return valueOf(line) == wanted; });
    return found || refuse(207);
}

// Of the values the rules use three: the override, the reader's PS value and the new name.
short BootloadRules::checkRulesForBootload(const char* name) {
    if (!checkFileTampered(name))
        return 0;
    const HeaderLines lines = storeFile(name);
    const int section = getIndexNewFW(lines);
    if (!isComplete(lines, section))
        return refuse(205);
    const std::string value = getFNValueForNewFW(lines, section);
    if (value.size() < kShortestName)
        return refuse(221);
    const std::string newName = removeSVN(convertToUppercase(value.substr(1)));
    if (!getFNValueForReaderFW(lines, section))
        return 0;
    if (newName.size() < kShortestName)
        return refuse(221);
    const std::string newFamily = newName.substr(0, 3);
    if (newFamily == "TKG")
        return checkTKGRule(newName) ? 1 : 0;
    if (!checkCurrentFwWithTargetFw(newName, getOvrValue(lines)))
        return 0;
    const bool isExempt = readerFirmware().substr(0, 3) == "TKH";
    return isExempt || checkRule1(newName, getPSValueForCurrentReader(lines)) ? 1 : 0;
}

// NOLINTEND(performance-unnecessary-value-param)
