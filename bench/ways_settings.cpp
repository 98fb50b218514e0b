// SPDX-License-Identifier: MIT
// Connects, and settings read and written: by the library, and by loops over the least exchanges.
#include "bench/plain_readers.h"
#include "bench/ways.h"
#include "frame/zelTagAPI.h"
#include "frame/zelTagState.h"

#include <array>
#include <cstring>

namespace zel::bench {

namespace {

constexpr int kReportBytes = 8;
using Report = std::array<unsigned char, kReportBytes>;

// What holds a plain reader's settings: the ID pair, four blocks, twelve pages of field data (the
// old form has as many), and its texts of 8, 3 and 3 characters, each character a query.
constexpr int kBlocks = 4;
constexpr int kPages = 12;
constexpr int kCharacters = 8 + 3 + 3;
constexpr int kReadQueries = 1 + kBlocks + kPages + kCharacters;

// A connect also asks each reader whether it holds several configurations, and device 0 once more.
constexpr int kConnectQueries = kReadQueries + 1;

// Of a write: each block and page is a command and its data, the commit is one report, and one
// query tells which pause the reader needs.
constexpr int kWrittenParts = 1 + kBlocks + kPages;

constexpr int kMostReaders = 127;
Report records[kMostReaders][kConnectQueries];

void send(int reader, const Report& report) {
    plainReaders().setFeature(&records[reader], 0, report.data(), kReportBytes);
}

void query(int reader, unsigned char command, Report& reply) {
    long size = kReportBytes;
    send(reader, {command});
    plainReaders().getFeature(&records[reader], 0, reply.data(), &size);
}

void queryAll(int reader, int number) {
    for (int i = 0; i < number; ++i)
        query(reader, 0x80, records[reader][i]);
}

template <int Number> struct Connect {
    static bool begin() { return connectPlainReaders(Number); }
    static int byLibrary() {
        USBDisconnect();
        USBConnect(nullptr);
        return GetDevCnt();
    }
    static int byLoop() {
        for (int reader = 0; reader < Number; ++reader)
            queryAll(reader, kConnectQueries);
        query(0, 0x80, records[0][0]);
        return Number;
    }
};

void disconnect() { USBDisconnect(); }

int readByLoop() {
    queryAll(0, kReadQueries);
    return 1;
}

void markAll(tsTagCfg& settings) {
    settings.bDirtyIDFrmt1 = settings.bDirtyIDFrmt2 = settings.bDirtyTime = settings.bDirtyExt = 1;
    settings.bDirtySepFld = 1;
}

int writeAllByLibrary() {
    markAll(DevDat[0].Cfg[0]);
    DevDat[0].bLUIDDirty = 1;
    return WriteCfg();
}

int writeOneByLibrary() {
    DevDat[0].Cfg[0].bDirtyTime = 1;
    return WriteCfg();
}

int writeByLoop(int parts) {
    for (int part = 0; part < parts; ++part) {
        send(0, {0x80});
        send(0, records[0][part]);
    }
    send(0, {0x90});
    query(0, 0x80, records[0][0]);
    return 1;
}

bool connectOne() { return connectPlainReaders(1); }

constexpr Way kWays[] = {
    {"connect-1", Connect<1>::begin, Connect<1>::byLibrary, disconnect},
    {"connect-1-by-loop", Connect<1>::begin, Connect<1>::byLoop, disconnect},
    {"connect-16", Connect<16>::begin, Connect<16>::byLibrary, disconnect},
    {"connect-16-by-loop", Connect<16>::begin, Connect<16>::byLoop, disconnect},
    {"connect-127", Connect<127>::begin, Connect<127>::byLibrary, disconnect},
    {"connect-127-by-loop", Connect<127>::begin, Connect<127>::byLoop, disconnect},
    {"settings-read", connectOne, ReadCfg, disconnect},
    {"settings-read-by-loop", connectOne, readByLoop, disconnect},
    {"settings-write-all", connectOne, writeAllByLibrary, disconnect},
    {"settings-write-all-by-loop", connectOne, [] { return writeByLoop(kWrittenParts); },
     disconnect},
    {"settings-write-one", connectOne, writeOneByLibrary, disconnect},
    {"settings-write-one-by-loop", connectOne, [] { return writeByLoop(1); }, disconnect},
};

} // namespace

std::span<const Way> settingsWays() { return kWays; }

} // namespace zel::bench
