// SPDX-License-Identifier: MIT
// A simulated proximity reader's ASCII protocol: text commands that end in a carriage return,
// answered by text.
#pragma once

#include "sim/tag/reader.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zel::sim {

class TagAsciiProtocol {
public:
    explicit TagAsciiProtocol(TagReader& reader) : reader_(reader) {}

    // Takes a character; what the reader sends back at once. It echoes until it is told not to, and
    // ends its answers with a prompt when it is told to.
    std::string take(char character);

    // Forgets the line under way.
    void dropLine() { line_.clear(); }

    // The lines that came whole, without their ends, empty ones left out; they are told once.
    std::vector<std::string> takeHeard() { return std::exchange(heard_, {}); }

    // Answers in place of the reader's own, without the prompt.
    void setListing(std::string text) { listing_ = std::move(text); }
    void setIdAnswer(std::string text) { idAnswer_ = std::move(text); }
    void setVersionAnswer(std::string text) { versionAnswer_ = std::move(text); }

    // How long ago the identifier came, in milliseconds.
    void setIdAge(unsigned age) { idAge_ = age; }

    // Whether the set-up line came already.
    void setEcho(bool echoes) { echoes_ = echoes; }
    void setPrompt(bool prompts) { prompts_ = prompts; }

private:
    std::string answer(std::string_view line);
    std::string carryOut(std::string_view command);
    std::string assign(std::string_view key, std::string_view value);
    std::string listing() const;
    std::string version() const;
    std::string identifier();

    TagReader& reader_;
    std::string line_;
    std::vector<std::string> heard_;
    std::optional<std::string> listing_;
    std::optional<std::string> idAnswer_;
    std::optional<std::string> versionAnswer_;
    unsigned idAge_ = 0;
    bool echoes_ = true;
    bool prompts_ = false;
};

} // namespace zel::sim
