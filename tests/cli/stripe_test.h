// SPDX-License-Identifier: MIT
// Runs commands in this process on a magnetic stripe reader at the end of a simulated line.
#pragma once

#include "sim/band/reader.h"
#include "tests/cli/command_line_test.h"
#include "tests/support/line_test.h"

#include <functional>
#include <nlohmann/json.hpp>

namespace zel::test {

class StripeTest : public LineTest {
protected:
    // One that a test tells of each command before it gets it.
    class Reader : public sim::BandReader {
    public:
        std::function<void(const std::string& bytes)> onBytes;

        std::vector<std::uint8_t> receive(std::span<const std::uint8_t> bytes) override {
            if (onBytes)
                onBytes({bytes.begin(), bytes.end()});
            return BandReader::receive(bytes);
        }
    };

    StripeTest() : reader_(std::make_shared<Reader>()) { lines().attach(kPath, reader_); }
    ~StripeTest() override { EXPECT_EQ(reader_->violations(), 0) << reader_->lastViolation(); }

    Reader& reader() { return *reader_; }

    static CommandRun run(std::vector<const char*> arguments) {
        arguments.insert(arguments.end(), {"--port", kPath});
        return runCommand(arguments);
    }

    static nlohmann::json runJson(std::vector<const char*> arguments) {
        arguments.push_back("--json");
        const CommandRun done = run(arguments);
        EXPECT_EQ(done.exit, cli::ExitCode::Done) << done.err;
        return nlohmann::json::parse(done.out);
    }

    static nlohmann::json device() { return {{"index", 0}, {"name", "COM1:"}, {"port", kPath}}; }

private:
    std::shared_ptr<Reader> reader_;
};

} // namespace zel::test
