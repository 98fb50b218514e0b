// SPDX-License-Identifier: MIT
// The chain of rules that a firmware file and the active reader must pass.
#include "firmware/rules.h"

#include "firmware/messages.h"
#include "firmware/reader_names.h"
#include "frame/zelTagAPI.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

using namespace zel::firmware;

namespace {

constexpr std::size_t kFamily = 3;     // first characters of a name
constexpr std::size_t kGeneration = 3; // where its digit stands
constexpr std::size_t kTail = 7;       // what must agree without an override
constexpr std::size_t kInterface = 7;  // two digits
constexpr std::size_t kSecondApp = 8;  // the second processor's digit of a TKG name
constexpr std::size_t kCode = 9;       // three letters of the product
constexpr std::size_t kFormat = 14;    // the mark of the special format
constexpr char k256K[] = " 256";
constexpr char kNoVersion[] = "000";

bool passIf(bool isPassed, int code) { return isPassed || refuse(code); }

// Characters of a name; nothing where it doesn't reach.
std::string_view field(std::string_view name, std::size_t position, std::size_t length) {
    return position < name.size() ? name.substr(position, length) : std::string_view();
}

bool isOneOf(std::string_view code, std::initializer_list<const char*> codes) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

// A version of the second processor's application tells by its third digit.
std::string_view secondAppDigit(std::string_view version) { return field(version, 2, 1); }

} // namespace

// The operations take copies: a class that overrides one may change or keep them.
// NOLINTBEGIN(performance-unnecessary-value-param)

std::string BootloadRules::getFirmwareVersion(short unit, short slot) {
    const unsigned word = GetFirmwareVersion(unit, slot);
    return std::to_string(word >> 16 & 0xFF) + std::to_string(word >> 8 & 0xFF) +
           std::to_string(word & 0xFF);
}

bool BootloadRules::checkCurrentFwWithTargetCpu1BL(std::string newName) {
    const std::string bootLoader = getFirmwareVersion(1, 1);
    const bool applies = field(newName, kGeneration, 1) >= "2";
    return passIf(!applies || bootLoader >= "149" || bootLoader == kNoVersion, 216);
}

bool BootloadRules::checkTKGRule(std::string newName) {
    const std::string application = getFirmwareVersion(1, 0);
    return passIf(secondAppDigit(application) == field(newName, kSecondApp, 9), 211);
}

bool BootloadRules::checkCurrentFwWithTargetFw(std::string newName, int overrideNumber) {
    const std::string current = readerFirmware();
    const bool sameFamily = field(current, 0, kFamily) == field(newName, 0, kFamily);
    const bool sameTail =
        field(current, kTail, std::string::npos) == field(newName, kTail, std::string::npos);
    return passIf(sameFamily && (overrideNumber != 0 || sameTail), 209);
}

bool BootloadRules::checkForTKATKBTKC(std::string ps, std::string newName, std::string current) {
    if (!isOneOf(field(newName, kCode, 3), {"TKA", "TKB", "TKC"}))
        return true;
    if (current == "151")
        return passIf(ps == k256K && checkFor256KModels(ps, current), 212);
    return passIf(current >= "148", 212);
}

bool BootloadRules::checkFor256KModels(std::string ps, std::string current) {
    return passIf(ps != k256K || current >= "151", 213);
}

bool BootloadRules::checkForTKDTKE(std::string ps, std::string newName, std::string current) {
    if (!isOneOf(field(newName, kCode, 3), {"TKD", "TKE"}))
        return true;
    if (current == "151")
        return passIf(ps == k256K && checkFor256KModels(ps, current), 214);
    return passIf(current >= "149", 214);
}

bool BootloadRules::checkForTKF(std::string newName, std::string current) {
    return passIf(field(newName, kCode, 3) != "TKF" || current >= "152", 215);
}

bool BootloadRules::checkForCCID(std::string newName, std::string current) {
    return passIf(field(newName, kInterface, 2) != "06" || current >= "156", 210);
}

bool BootloadRules::checkSpecialFormatForTKG(std::string newName) {
    if (field(newName, kFormat, 1) != "X")
        return true;
    return passIf(secondAppDigit(getFirmwareVersion(1, 0)) == "1", 217);
}

// Two models skip the chain.
bool BootloadRules::checkRule1(std::string newName, std::string ps) {
    if (isOneOf(readerPartNumber(), {"MDL-4Qz2BzT", "MDL-4Qz1BzT"}))
        return true;
    const std::string current = getFirmwareVersion(0, 1);
    return checkCurrentFwWithTargetCpu1BL(newName) && checkForTKATKBTKC(ps, newName, current) &&
           checkForTKDTKE(ps, newName, current) && checkForTKF(newName, current) &&
           checkForCCID(newName, current) && checkFor256KModels(ps, current) &&
           checkSpecialFormatForTKG(newName);
}

bool BootloadRules::checkFileTampered(const char* name) {
    return passIf(CheckTamperedFirmwareFile(name) != 0, 11);
}

// No digit that isn't ASCII's counts.
bool isNumber(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The letters a to z; the application's locale has no say.
std::string convertToUppercase(std::string text) {
    for (char& character : text)
        if (character >= 'a' && character <= 'z')
            character = static_cast<char>(character - 'a' + 'A');
    return text;
}

std::string BootloadRules::removeSVN(std::string name) {
    const std::size_t last = name.rfind('-');
    const std::string tail = last == std::string::npos ? "" : name.substr(last + 1);
    return isNumber(tail) ? name.substr(0, name.find('-')) : name;
}

// NOLINTEND(performance-unnecessary-value-param)
