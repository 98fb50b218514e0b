// SPDX-License-Identifier: MIT
// The exported calls on files that hold a device's settings. No family reads or writes such files
// yet, so each path meets an unserved product.
#include "base/text_by_character.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"

using zel::TextIn;
using zel::unsupportedValue;

int WriteDevCfgToFile(const char*) { return unsupportedValue(); }

int ReadDevCfgFmFile(const char*) { return unsupportedValue(); }

// A sensor's file names no kind.
int ReadDevTypeFromFile(const char*) {
    return zel::activeProduct() == zel::kEcho ? 0 : unsupportedValue();
}

// The character forms are crossed: each ends with the other one's operation.
int writeDevCfgToFile_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, ReadDevCfgFmFile);
}

int readDevCfgFmFile_char(short index, short character) {
    static constinit TextIn name;
    return name.put(index, character, WriteDevCfgToFile);
}
