// SPDX-License-Identifier: MIT
// The exported calls on key blobs. No reader is sent blobs yet.
#include "frame/zelTagAPI.h"

int WriteSecureData(unsigned char*, int) { return 0; }

int ReadSecureData(unsigned char*, unsigned char*) { return 0; }

int LoadIniFile(const char*) { return 0; }
