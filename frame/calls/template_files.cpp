// SPDX-License-Identifier: MIT
// The exported calls on files that hold a device's settings.
#include "base/text_by_character.h"
#include "cfgfile/band_file.h"
#include "cfgfile/echo_file.h"
#include "cfgfile/interface_kind.h"
#include "cfgfile/tag_file.h"
#include "frame/calls/dispatch.h"
#include "frame/zelTagAPI.h"

using namespace zel;

int WriteDevCfgToFile(const char* name) {
    return forFamily(zeltag_WriteDevCfgToFile, zelband_WriteDevCfgToFile, zelecho_WriteDevCfgToFile,
                     name);
}

int ReadDevCfgFmFile(const char* name) {
    return forFamily(zeltag_ReadDevCfgFmFile, zelband_ReadDevCfgFmFile, zelecho_ReadDevCfgFmFile,
                     name);
}

// A sensor's file names no kind.
int ReadDevTypeFromFile(const char* name) {
    if (activeProduct() == kBand)
        return zelband_ReadDevTypeFromFile(name);
    return activeProduct() == kEcho ? 0 : unsupportedValue();
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
