// SPDX-License-Identifier: MIT
// A reader behind a mock hidraw node: answers the node's requests, misbehaves and keeps a trace.
#pragma once

#include "sim/tag/reader.h"

#include <cstdint>
#include <limits>
#include <mutex>
#include <span>
#include <string>

namespace zel::test {

struct Identity {
    std::uint16_t vendor;
    std::uint16_t product;
};

constexpr Identity kTagReader = {0x5A3E, 0x9D23};

// How a node answers. Errors are errno values, 0 for none.
struct Behaviour {
    Identity identity = kTagReader;
    int infoError = 0;
    int setError = 0;
    int getError = 0;
    std::size_t answerSize = 9; // bytes that a get delivers, the report ID among them
    int reportsUntilGone = std::numeric_limits<int>::max(); // sets and gets; then ENODEV
};

class MockReader {
public:
    // Its card has 64 bits: 11 22 33 44 55 66 77 88.
    explicit MockReader(const Behaviour& behaviour);

    void behave(const Behaviour& behaviour);

    // A line a request, as it arrived: "info", "set 00 8F ...", "get 00 00 ...".
    std::string trace() const;

    // Serves one request, on the bed's thread. Its result, or an errno value negated.
    int serve(unsigned long request, std::span<std::uint8_t> data);

private:
    int tellIdentity(std::span<std::uint8_t> data);
    int set(std::span<const std::uint8_t> report);
    int get(std::span<std::uint8_t> report);
    bool isGone();

    mutable std::mutex mutex_;
    Behaviour behaviour_;
    sim::TagReader model_;
    std::string trace_;
};

} // namespace zel::test
