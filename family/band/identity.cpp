// SPDX-License-Identifier: MIT
// The active device's name, by characters from a buffer of this family's own.
#include "base/text_by_character.h"
#include "family/band/band.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

int zelband_getDevName_char(short index) {
    static constinit zel::TextOut<ZELTAGAPI_NAME_SIZE> name;
    return name.at(index, GetDevName);
}
