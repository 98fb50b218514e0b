// SPDX-License-Identifier: MIT
// The numbered messages of the firmware rules.
#pragma once

#include <map>
#include <string>

struct ErrorCodes {
    ErrorCodes();

    // Enters all messages.
    void initMapForErrorCode();

    // Makes a code's message the last one, errorString; an unknown code changes nothing.
    void errorEncountered(int code);

private:
    std::map<int, std::string> messages_;
};

namespace zel::firmware {

// Makes a code's message the last one; false, for the rule that refuses.
bool refuse(int code);

} // namespace zel::firmware
