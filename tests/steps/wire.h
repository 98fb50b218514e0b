// SPDX-License-Identifier: MIT
// What moves between the library and the device under test, and where it goes wrong.
#pragma once

#include "sim/wire/stream_device.h"
#include "tests/steps/operation.h"

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zel::test::steps {

// Random bytes in place of the answer, and a report that goes through at a second try: what these
// leave is the same for all rows.
enum class Trouble { AsTold, Noise, OnceRefused };

// One exchange of an operation that goes wrong: its number from 0, and how.
struct Point {
    std::size_t exchange;
    Fault fault;
    Trouble trouble = Trouble::AsTold;
};

class Wire {
public:
    Wire() = default;
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;
    virtual ~Wire() = default;

    // Lets `times` exchanges from the point on go wrong.
    virtual void spoil(const Steps& steps, const Point& point, int times) = 0;
    virtual void heal() = 0;

    // The transfers since the last call: what went out in hexadecimal or as text, "<" for a reply
    // that was fetched. A report that is tried again counts once.
    virtual std::vector<std::string> takeTraffic() = 0;

    // The transfers of an exchange, up to the one that goes wrong.
    virtual std::vector<std::string> transfers(const std::string& command) const = 0;
    virtual std::vector<std::string> transfersUpTo(const std::string& command,
                                                   Fault fault) const = 0;
    virtual bool hasReports() const = 0;
};

// Feature reports on the simulated bus; those of a stripe reader are text.
std::unique_ptr<Wire> reportWire(std::size_t port, bool isText);

// A byte stream: the device gets whole commands alone, and each of them may be lost.
class TroubledStream : public sim::StreamDevice, public Wire {
public:
    enum class Speech { Frames, Text, Lines };
    using Bytes = std::vector<std::uint8_t>;

    TroubledStream(std::shared_ptr<sim::StreamDevice> device, Speech speech)
        : device_(std::move(device)), speech_(speech) {}

    Bytes receive(std::span<const std::uint8_t> bytes) override;
    void restart() override;

    // Answers of at least so many bytes from now on, for who waits long for each that is missing.
    void fillUp(std::size_t size) { leastAnswer_ = size; }

    void spoil(const Steps& steps, const Point& point, int times) override;
    void heal() override;
    std::vector<std::string> takeTraffic() override { return std::exchange(traffic_, {}); }
    std::vector<std::string> transfers(const std::string& command) const override;
    std::vector<std::string> transfersUpTo(const std::string& command, Fault) const override {
        return transfers(command);
    }
    bool hasReports() const override { return false; }

private:
    // What has come and isn't whole yet.
    enum class Part { Command, Data };

    bool isWhole() const;
    bool isCommand() const;
    Bytes pass();
    Bytes passCommand();
    Bytes passData();
    bool isHit(Fault fault) const;
    Bytes spoiled(Bytes answer, bool isOfData);

    std::shared_ptr<sim::StreamDevice> device_;
    Speech speech_;
    Bytes bytes_;
    Part part_ = Part::Command;
    std::size_t awaited_ = 0;   // bytes of data
    std::size_t exchanges_ = 0; // begun since the last spoil()
    std::vector<std::string> traffic_;
    std::optional<Point> point_;
    std::size_t times_ = 0;
    std::size_t leastAnswer_ = 0;
    std::uint32_t noise_ = 1;
};

} // namespace zel::test::steps
