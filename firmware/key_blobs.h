// SPDX-License-Identifier: MIT
// Key blobs of a proximity reader, moved four bytes a report. What they mean is the reader's.
//
// A blob is a header of four bytes, whose third is the count of data bytes, then the data. No key
// is logged or kept: each work area of the exchange that held one is wiped before it leaves.
#pragma once

#include "base/wipe.h"
#include "family/tag/feature_report.h"

namespace zel::firmware {

constexpr int kBlobHeaderSize = 4;
constexpr int kBlobLengthByte = 2; // of the header
constexpr int kMostBlobData = 255;

// One report out and one in.
class BlobExchange {
protected:
    // Clears the error word and both reports.
    void start();

    // Sends a report of the blob's sub-command; null leaves its last four bytes zero.
    bool send(std::uint8_t subCommand, std::uint8_t chunk, const unsigned char* fourBytes);
    bool receive();

    // Whether the reply repeats the first four bytes.
    bool isEchoed() const;

    const tag::Payload& sent() const { return sent_.area; }
    const tag::Payload& received() const { return received_.area; }

private:
    Wiped<tag::Payload> sent_;
    Wiped<tag::Payload> received_;
};

// All results are 1 or 0.
class readSecure : BlobExchange {
public:
    // Reads the blob of a header. `output` holds the count of data bytes, rounded up to a multiple
    // of four. 1 when the header was acknowledged, whatever came of the data.
    int readSecureData(const unsigned char* header, unsigned char* output);

    int readSecureHeader(const unsigned char* header);

    // 1 when any chunk came through. A chunk that didn't leaves no gap: the next one moves up.
    int readKeyData(unsigned char* output, int length);

    // Whether two payloads of eight bytes are the same.
    static bool headerVerify(const unsigned char* sent, const unsigned char* received);
};

class writeSecure : BlobExchange {
public:
    // Writes, saves and commits a blob of `size` bytes, its header included.
    int WriteSecureData(const unsigned char* blob, int size);

    int WriteSecureHeader(const unsigned char* header);

    // 1 when any chunk was acknowledged.
    int WriteKeyData(const unsigned char* data, int length);

    // Saves what was written and commits it.
    int SaveKeyData();

    // Writes the blobs of an INI file one after the other (firmware/ini_file.cpp). The result is
    // that of the last blob; a section of another form ends the run with 0.
    int loadIniConfiguration(const char* path);
};

} // namespace zel::firmware
