// SPDX-License-Identifier: MIT
// The reports that read and write a key blob.
#include "firmware/key_blobs.h"

#include "base/pause.h"
#include "family/tag/error_words.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace zel::firmware {

namespace {

constexpr std::uint8_t kRead = 0x10;
constexpr std::uint8_t kWrite = 0x90;
constexpr std::uint8_t kHeader = 0; // chunk numbers, data chunks from 1
constexpr std::uint8_t kSave = 0xFF;
constexpr int kChunkSize = 4;
constexpr std::size_t kEchoed = 4; // bytes in front of the chunk's own

constexpr useconds_t kSavePause = 500'000; // the reader writes what it was told to save

bool isLength(int length) { return length >= 0 && length <= kMostBlobData; }

int chunksOf(int length) { return (length + kChunkSize - 1) / kChunkSize; }

} // namespace

void BlobExchange::start() {
    tag::clearError();
    sent_.area = {};
    received_.area = {};
}

bool BlobExchange::send(std::uint8_t subCommand, std::uint8_t chunk,
                        const unsigned char* fourBytes) {
    sent_.area = tag::command(tag::Opcode::Multi, subCommand, 0, chunk);
    if (fourBytes)
        std::copy_n(fourBytes, kChunkSize, sent_.area.begin() + kEchoed);
    return tag::send(sent_.area);
}

bool BlobExchange::receive() { return tag::fetch(received_.area); }

bool BlobExchange::isEchoed() const {
    return std::equal(sent().begin(), sent().begin() + kEchoed, received().begin());
}

int readSecure::readSecureData(const unsigned char* header, unsigned char* output) {
    if (!readSecureHeader(header))
        return 0;
    readKeyData(output, header[kBlobLengthByte]);
    return 1;
}

// A reply that doesn't come sets no error word.
int readSecure::readSecureHeader(const unsigned char* header) {
    start();
    if (!send(kRead, kHeader, header))
        return tag::fail(ZELTAGAPI_ERR_BLOB);
    return receive() && headerVerify(sent().data(), received().data());
}

int readSecure::readKeyData(unsigned char* output, int length) {
    start();
    if (!isLength(length))
        return 0;
    std::fill_n(output, length, std::uint8_t{0});
    int result = 0;
    for (int chunk = 1; chunk <= chunksOf(length); ++chunk) {
        if (!send(kRead, static_cast<std::uint8_t>(chunk), nullptr))
            return tag::fail(ZELTAGAPI_ERR_BLOB);
        if (!receive() || !isEchoed())
            continue;
        output = std::copy_n(received().begin() + kEchoed, kChunkSize, output);
        result = 1;
    }
    return result;
}

bool readSecure::headerVerify(const unsigned char* sent, const unsigned char* received) {
    return std::equal(sent, sent + tag::kPayloadSize, received);
}

// The data follows its header whatever the reader answered to that.
int writeSecure::WriteSecureData(const unsigned char* blob, int size) {
    if (size < kBlobHeaderSize || size - kBlobHeaderSize != blob[kBlobLengthByte])
        return 0;
    WriteSecureHeader(blob);
    return WriteKeyData(blob + kBlobHeaderSize, blob[kBlobLengthByte]) && SaveKeyData();
}

// A report that can't be sent sets no error word.
int writeSecure::WriteSecureHeader(const unsigned char* header) {
    start();
    if (!send(kWrite, kHeader, header))
        return 0;
    return receive() ? isEchoed() : tag::fail(ZELTAGAPI_ERR_BLOB);
}

// One good chunk anywhere counts for the whole blob; one that can't be sent ends it.
int writeSecure::WriteKeyData(const unsigned char* data, int length) {
    start();
    if (!isLength(length))
        return 0;
    Wiped<std::array<unsigned char, kMostBlobData + 1>> work;
    std::copy_n(data, length, work.area.begin());
    int result = 0;
    for (int chunk = 1; chunk <= chunksOf(length); ++chunk) {
        const unsigned char* const fourBytes =
            &work.area[static_cast<std::size_t>(chunk - 1) * kChunkSize];
        if (!send(kWrite, static_cast<std::uint8_t>(chunk), fourBytes))
            return tag::fail(ZELTAGAPI_ERR_BLOB);
        if (receive() && isEchoed())
            result = 1;
    }
    return result;
}

int writeSecure::SaveKeyData() {
    start();
    if (!send(kWrite, kSave, nullptr))
        return tag::fail(ZELTAGAPI_ERR_BLOB);
    if (!receive() || !isEchoed())
        return 0;
    pauseFor(kSavePause);
    return tag::send(tag::command(tag::Opcode::Commit)) ? 1 : tag::fail(ZELTAGAPI_ERR_BLOB);
}

} // namespace zel::firmware
