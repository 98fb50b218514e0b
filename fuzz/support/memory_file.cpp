// SPDX-License-Identifier: MIT
// Streams over memory, with a buffer that none of them has to allocate.
#include "fuzz/support/memory_file.h"

#include "fuzz/target.h"

#include <array>
#include <cstring>

namespace zel::fuzz {

const char kInputFile[] = "input";
const char kOutputFile[] = "output";

namespace {

constexpr std::size_t kStreams = 2; // that are open at once
constexpr std::size_t kBuffer = 4096;

std::string_view input;
const char* inputAlias = nullptr;
std::array<char, std::size_t{1} << 16> written;
std::size_t writtenSize = 0;

struct Stream {
    std::string_view text;
    std::size_t place = 0;
    std::array<char, kBuffer> buffer;
};
std::array<Stream, kStreams> streams;
std::size_t nextStream = 0;

ssize_t readSome(void* cookie, char* to, std::size_t size) {
    auto& stream = *static_cast<Stream*>(cookie);
    const std::size_t count = stream.text.substr(stream.place).copy(to, size);
    stream.place += count;
    return static_cast<ssize_t>(count);
}

ssize_t writeSome(void*, const char* from, std::size_t size) {
    require(size <= written.size() - writtenSize);
    std::memcpy(&written[writtenSize], from, size);
    writtenSize += size;
    return static_cast<ssize_t>(size);
}

int seek(void* cookie, off64_t* offset, int whence) {
    auto& stream = *static_cast<Stream*>(cookie);
    if (whence != SEEK_SET)
        return -1;
    stream.place = std::min(static_cast<std::size_t>(*offset), stream.text.size());
    return 0;
}

std::FILE* open(std::string_view text, const char* mode) {
    Stream& stream = streams[nextStream++ % kStreams];
    stream.text = text;
    stream.place = 0;
    if (*mode == 'w')
        writtenSize = 0;
    std::FILE* const file = *mode == 'r'
                                ? fopencookie(&stream, "r", {readSome, nullptr, seek, nullptr})
                                : fopencookie(&stream, "w", {nullptr, writeSome, nullptr, nullptr});
    std::setvbuf(file, stream.buffer.data(), _IOFBF, stream.buffer.size());
    return file;
}

} // namespace

void setInput(std::string_view text, const char* alias) {
    input = text;
    inputAlias = alias;
}

std::string_view output() { return {written.data(), writtenSize}; }

void setOutput(std::string_view text) { writtenSize = text.copy(written.data(), written.size()); }

} // namespace zel::fuzz

extern "C" std::FILE* __real_fopen(const char* name, const char* mode);
extern "C" std::FILE* __wrap_fopen(const char* name, const char* mode);

std::FILE* __wrap_fopen(const char* name, const char* mode) {
    using namespace zel::fuzz;
    if (name == kInputFile || (inputAlias && std::strcmp(name, inputAlias) == 0))
        return open(input, mode);
    return name == kOutputFile ? open(output(), mode) : __real_fopen(name, mode);
}
