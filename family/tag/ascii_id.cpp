// SPDX-License-Identifier: MIT
// Reads the card's identifier by the ASCII protocol.
#include "base/pause.h"
#include "family/tag/ascii_answer.h"
#include "family/tag/ascii_protocol.h"
#include "family/tag/error_words.h"
#include "transport/port.h"

#include <array>
#include <cstring>
#include <unistd.h>

using namespace zel;

namespace {

constexpr char kQuery[] = "\rZTAG:QID.ID\r";
constexpr std::size_t kMostBytes = 200;
constexpr int kRounds = 300;
constexpr useconds_t kBytePause = 10'000; // µs
constexpr int kIdBytes = 8;
constexpr long long kFewestBits = 11;
constexpr int kHexadecimal = 16;
constexpr int kDecimal = 10;

using Answer = std::array<char, 251>;

struct Told {
    long long age = 0; // ms
    long long bits = 0;
    long long id = 0;
};

int refuse(std::int64_t error) {
    activeRecord().lLastErr = error;
    return 0;
}

bool hasBraces(const Answer& answer) {
    const char* const open = std::strchr(answer.data(), '{');
    return open && std::strchr(open, '}');
}

// Byte by byte, until the answer ends.
void readAnswer(CPort& port, Answer& answer) {
    std::size_t size = 0;
    for (int round = 0; round < kRounds && size < kMostBytes && !hasBraces(answer); ++round) {
        size += port.Read(&answer[size], 1) == 1 ? 1 : 0;
        pauseFor(kBytePause);
    }
}

// "{age,number,number,bits;identifier}": the age, the third number and the identifier hexadecimal.
bool parse(const Answer& answer, Told& told) {
    long long unused = 0;
    tag::AnswerScan scan(answer.data(), "{");
    scan.number(told.age, kHexadecimal).skip(',').number(unused, kDecimal).skip(',');
    scan.number(unused, kHexadecimal).skip(',').number(told.bits, kDecimal).skip(';');
    return scan.number(told.id, kHexadecimal).isGood();
}

bool isFresh(const Told& told) {
    return told.age >= 0 && told.age <= activeConfig(activeRecord()).sTimeParms.iIDHoldTO;
}

} // namespace

int acp_getActiveID(unsigned char* buffer, short size) {
    if (!buffer || size < kIdBytes)
        return refuse(ZELTAGAPI_ERR_LINE_SIZE);
    CPort* const port = activeRecord().pPort;
    if (!port || !port->IsConn())
        return refuse(ZELTAGAPI_ERR_LINE_CLOSED);
    port->FlushTx();
    port->SendAscii(kQuery);
    Answer answer = {};
    readAnswer(*port, answer);
    port->ACPClean();
    if (!hasBraces(answer))
        return refuse(ZELTAGAPI_ERR_LINE_ANSWER);
    Told told;
    if (!parse(answer, told) || told.bits < kFewestBits || !isFresh(told))
        return 0;
    const auto id = static_cast<std::uint64_t>(told.id);
    for (unsigned byte = 0; byte < kIdBytes; ++byte)
        buffer[byte] = static_cast<std::uint8_t>(id >> 8U * byte);
    return static_cast<std::int16_t>(told.bits);
}
