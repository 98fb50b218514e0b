// SPDX-License-Identifier: MIT
// The settings of a magnetic stripe reader, by the names of its template file.
#pragma once

#include "cli/command/failure.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zel::cli {

struct StripeSetting {
    enum class Kind { flag, byte, time, luid };

    std::string name; // such as "UserField[0].Keybyte[15]"
    Kind kind;
    int most;             // the least is 0
    unsigned short field; // user field, from 1; 0 for none
    unsigned short index; // of a LED or of a key byte
    int (*get)(const StripeSetting&);
    void (*set)(const StripeSetting&, int value);
};

// Milliseconds in a step of the reader's times.
constexpr int kStripeTimeUnit = 4;

// In the order of the file.
const std::vector<StripeSetting>& allStripeSettings();

// The setting of a name, upper and lower case alike; null when there is none.
const StripeSetting* findStripeSetting(std::string_view name);

// Why there is none of that name.
Failure noStripeSetting(std::string_view name);

// "flag", "number", "time"
const char* kindText(const StripeSetting& setting);

// "1", "8 ms"
std::string valueText(const StripeSetting& setting, int value);

// The number as the reader's memory takes it from a file: its low bits, of a flag whether it is
// above 0.
int asStored(const StripeSetting& setting, long number);

} // namespace zel::cli
