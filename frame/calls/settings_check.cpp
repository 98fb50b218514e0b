// SPDX-License-Identifier: MIT
// Takes the lines of a file as a load does, into records of its own.
#include "frame/calls/settings_check.h"

#include "base/runtime.h"
#include "cfgfile/band_file.h"
#include "cfgfile/band_keys.h"
#include "cfgfile/echo_file.h"
#include "family/echo/echo.h"
#include "firmware/trailer.h"

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstring>

namespace zel {

namespace {

using cfgfile::BandKey;
using firmware::finding;

class BandCheck {
public:
    zelFileFault take(const char* line) {
        const cfgfile::BandValue value = cfgfile::bandValueIn(line);
        if (!value.key)
            return setsNothing(line) ? ZELTAGAPI_FAULT_NONE : ZELTAGAPI_FAULT_LINE;
        isTold_.set(static_cast<std::size_t>(value.key - cfgfile::kBandKeys.data()));
        return isKept(*value.key, value.number) ? ZELTAGAPI_FAULT_NONE : ZELTAGAPI_FAULT_VALUE;
    }

    bool isWhole() const { return isTold_.all(); }

private:
    // The LUID is written as a signed number, and read as either.
    bool isKept(const BandKey& key, long value) {
        if (key.kind == BandKey::Kind::luid)
            return value >= INT16_MIN && value <= UINT16_MAX;
        store(key, record_, value);
        return valueOf(key, record_) == value;
    }

    static bool setsNothing(const char* line) {
        return std::strncmp(line, "//", 2) == 0 || line[std::strspn(line, " \t\r\n")] == '\0';
    }

    std::bitset<cfgfile::kBandKeys.size()> isTold_; // by key
    tsDevDat record_ = {};
};

zelFileCheck checkBand(std::FILE* file) {
    if (!cfgfile::hasBandTitle(file))
        return finding(ZELTAGAPI_FAULT_TITLE, 0);
    std::rewind(file);
    BandCheck check;
    cfgfile::BandLines lines(file);
    while (const char* const line = lines.next())
        if (const zelFileFault fault = check.take(line); fault != ZELTAGAPI_FAULT_NONE)
            return finding(fault, lines.number());
    return finding(check.isWhole() ? ZELTAGAPI_FAULT_NONE : ZELTAGAPI_FAULT_MISSING, 0);
}

// Without an error code for what is repaired.
tsEcho repaired(tsEcho settings) {
    CheckSonarParms(&settings.sSonarParms, 1);
    CheckWalkAwayParms(&settings.sWalkAwayParms, 1);
    CheckWalkUpParms(&settings.sWalkUpParms, 1);
    CheckIdleParms(&settings.sIdleParms, 1);
    return settings;
}

bool take(const cfgfile::KeyValue& setting, int value, tsEcho& settings) {
    return setting.key &&
           ProcessSonarTokenVal(setting.key, value, reinterpret_cast<std::uint16_t*>(&settings));
}

class EchoCheck {
public:
    zelFileFault take(char* line) {
        const cfgfile::KeyValue setting = cfgfile::keyValueIn(line);
        if (!zel::take(setting, 1, told_))
            return ZELTAGAPI_FAULT_LINE;
        tsEcho settings = repaired({});
        zel::take(setting, setting.value, settings);
        const tsEcho accepted = repaired(settings);
        return std::memcmp(&settings, &accepted, sizeof settings) == 0 ? ZELTAGAPI_FAULT_NONE
                                                                       : ZELTAGAPI_FAULT_VALUE;
    }

    // The four records follow one another.
    bool isWhole() const {
        constexpr std::size_t kBegin = offsetof(tsEcho, sSonarParms);
        std::int16_t words[(offsetof(tsEcho, reserved) - kBegin) / sizeof(std::int16_t)];
        static_assert(std::size(words) == 48);
        std::memcpy(words, reinterpret_cast<const char*>(&told_) + kBegin, sizeof words);
        return std::find(std::begin(words), std::end(words), 0) == std::end(words);
    }

private:
    tsEcho told_ = {}; // 1 in each word that has a line
};

zelFileCheck checkEcho(std::FILE* file) {
    EchoCheck check;
    cfgfile::Lines lines(file);
    while (char* const line = lines.next()) {
        const zelFileFault fault =
            cfgfile::isComment(line) ? ZELTAGAPI_FAULT_NONE : check.take(line);
        if (fault != ZELTAGAPI_FAULT_NONE)
            return finding(fault, lines.number());
    }
    return finding(check.isWhole() ? ZELTAGAPI_FAULT_NONE : ZELTAGAPI_FAULT_MISSING, 0);
}

} // namespace

zelFileCheck checkSettings(const char* name, int kind) {
    std::FILE* file = nullptr;
    if (!name || fopen_s(&file, name, "rt") != 0)
        return finding(ZELTAGAPI_FAULT_OPEN, 0);
    zelFileCheck check = kind == ZELTAGAPI_FILE_BAND ? checkBand(file) : checkEcho(file);
    if (std::ferror(file)) // a folder, for one
        check = finding(ZELTAGAPI_FAULT_OPEN, 0);
    std::fclose(file);
    return check;
}

} // namespace zel
