// SPDX-License-Identifier: MIT
// An operation on a device as a row: its exchanges, and what each of them leaves when it fails.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace zel::test::steps {

// What goes wrong with an exchange. A write has a second half: its data, or the answer to it.
enum class Fault { Send, Fetch, Cut, Ones, Data, DataCut, DataOnes };
inline constexpr std::size_t kFaults = 7;

// The device that an operation works on, and how it is reached.
enum class Place {
    TagReports,  // a plain reader on USB
    PlusReports, // a TagPlus reader on USB
    TagLine,     // a plain reader at the end of a line
    TagTcp,      // and behind a TCP connection
    PlusLine,    // a TagPlus reader at the end of a line
    AsciiLine,   // a reader that is driven by lines of text
    BandReports, // a magnetic stripe reader on USB
    BandLine,    // and at the end of a line
    EchoReports, // a presence sensor
};

// What an operation leaves. `seen` has a character for each sight: '.' as before the call, '+' as
// behind a good one, '0' empty, '!' anything else.
struct Outcome {
    long long result;
    std::int64_t error; // the word of the active record
    std::string seen;
    std::string then = {};  // exchanges behind the one that failed; "*": all that a good run makes
    std::string later = {}; // seen behind a call with a healed device; empty: as behind a good run
    std::optional<long long> laterResult = {};
};

// `command` is how the request begins, and its form: '?' a request and its reply, '=' a request and
// its data, '!' a request alone, '<' a reply alone.
struct Step {
    std::string command;
    std::array<std::optional<Outcome>, kFaults> outcomes = {};
    int tries = 1; // that the operation itself gives the exchange

    std::optional<Outcome>& of(Fault fault) { return outcomes[static_cast<std::size_t>(fault)]; }
    const std::optional<Outcome>& of(Fault fault) const {
        return outcomes[static_cast<std::size_t>(fault)];
    }
    char form() const { return command.back(); }
};
using Steps = std::vector<Step>;

// Something that an operation may change: in the caller's hands, in the table, or in the device.
struct Sight {
    const char* name;
    std::string (*view)();
};

// A call of the library; equal ones share a row.
struct Call {
    const char* name; // as exported
    long long (*make)();
};

struct Operation {
    std::string name; // of the row
    Place place;
    std::vector<Call> calls;
    void (*prepare)() = [] {};
    std::vector<Sight> sights = {};
    long long result = 1;
    Steps steps = {};
    void (*again)() = [] {};                            // what a caller does before another try
    std::string seen = std::string(sights.size(), '+'); // behind a good run
    std::int64_t error = 0;                             // behind a good run
};

inline void PrintTo(const Operation& operation, std::ostream* stream) { *stream << operation.name; }

// The rows of all devices.
std::vector<Operation> allOperations();

// A failed exchange that ends the operation, but for `then`; and one that it passes over.
Outcome ends(long long result, std::int64_t error, std::string seen = {}, std::string then = {});
Outcome passes(long long result, std::int64_t error, std::string seen = {});

// A reply that is lost counts as much as a request that is, unless it is told apart.
Step query(std::string command, Outcome lost, Outcome cut, Outcome ones);
Step query(std::string command, Outcome notSent, Outcome notFetched, Outcome cut, Outcome ones);

// A report and its data, either of them lost; and one that has no reply.
Step write(std::string command, Outcome lost);
Step write(std::string command, Outcome lost, Outcome dataLost);
Step order(std::string command, Outcome lost);

// A frame of a byte stream: however its answer is spoiled, it is refused.
Step frame(std::string command, Outcome lost, int tries = 1);
Step frame(std::string command, Outcome notSent, Outcome notAnswered, int tries = 1);

// One that is answered by a status word alone, of which a lost half counts as zero: as success.
Step frameOrder(std::string command, Outcome notSent, Outcome notAnswered, Outcome good);

// One whose data follow when the reader has answered; then the status word comes.
Step frameWrite(std::string command, Outcome notSent, Outcome notAnswered, Outcome good,
                int tries = 1);

// The outcome of a step that lasts until the next connect.
Outcome lasting(Outcome outcome, std::string later);

// The steps of a read that another operation makes too: there they fail in both directions alone.
Steps lostAlone(Steps steps);

// Rows one behind the other.
template <class Row> std::vector<Row>& operator+=(std::vector<Row>& rows, std::vector<Row> more) {
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

} // namespace zel::test::steps
