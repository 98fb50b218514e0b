// SPDX-License-Identifier: MIT
// Values and numbers in the answers of the ASCII protocol. An input is a key up to a line end, then
// the answer.
#include "family/tag/ascii_answer.h"
#include "family/tag/ascii_protocol.h"
#include "fuzz/target.h"

#include <array>
#include <string>

using namespace zel::fuzz;

namespace {

template <std::size_t Size> using Text = std::array<char, Size>;

template <std::size_t Size> Text<Size> endedText(std::string_view text) {
    Text<Size> ended = {};
    text.copy(ended.data(), Size - 1);
    return ended;
}

void scan(const char* answer) {
    long long number = 0;
    zel::tag::AnswerScan walk(answer, "{");
    walk.number(number, 16).skip(',').number(number, 10).skip(';').number(number, 16);
    require(!walk.isGood() || std::string_view(answer).find('{') != std::string_view::npos);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto key = endedText<32>(input.textUpTo('\n'));
    const auto answer = endedText<1024>(input.text());
    const int value = AcpGetValue(answer.data(), key.data());
    require(value == 0 || std::string_view(answer.data()).find('\r') != std::string_view::npos);
    scan(answer.data());
    zel::tag::hasPrompt(answer.data());
    return 0;
}
