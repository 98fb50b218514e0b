// SPDX-License-Identifier: MIT
// The exported calls on the line of the active device. No device has a line yet: connecting through
// one meets an unserved product, and reading or writing moves nothing.
#include "base/data_by_byte.h"
#include "frame/state.h"
#include "frame/zelTagAPI.h"

using zel::DataByByte;
using zel::unsupportedValue;

int comConnect() { return unsupportedValue(); }

int comConnectPort(unsigned short) { return unsupportedValue(); }

int ComDisconnect() { return unsupportedValue(); }

std::int64_t ReadSerialPort(unsigned char*, unsigned int) { return 0; }

std::int64_t WriteSerialPort(const unsigned char*, unsigned int) { return 0; }

std::int64_t QuickReadSerialPort(unsigned char*, unsigned int) { return 0; }

int readSerialPort_char(short index) {
    static constinit DataByByte<1024> read;
    return read.at(index, ReadSerialPort);
}

int quickReadSerialPort_char(short index) {
    static constinit DataByByte<1024> read;
    return read.at(index, QuickReadSerialPort);
}

void SetSerialTimeouts(int, int, int) {}
