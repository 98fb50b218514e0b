// SPDX-License-Identifier: MIT
// Takes the text of an answer apart.
#pragma once

namespace zel::tag {

// Walks along a text. Once a step fails all later ones fail, too.
class AnswerScan {
public:
    // Begins behind the first place of a mark.
    AnswerScan(const char* text, const char* mark);

    AnswerScan& number(long long& value, int base);
    AnswerScan& skip(char character);

    bool isGood() const { return at_ != nullptr; }

private:
    const char* at_;
};

} // namespace zel::tag
