// SPDX-License-Identifier: MIT
// Captures what a command in this process prints.
#include "tests/cli/command_line_test.h"

#include "cli/main/program.h"

#include <ostream>

namespace zel::test {

namespace {

constexpr int kAlways = 1000;

int occurrences(const std::string& part, const std::string& text) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

} // namespace

void PrintTo(const CommandRun& run, std::ostream* stream) {
    *stream << cli::codeName(run.exit) << "\nstdout: " << run.out << "\nstderr: " << run.err;
}

CommandRun refused(cli::ExitCode exit, const std::string& line) {
    return {exit, "", "zeltag: " + line + "\n"};
}

CommandRun cantWrite(const std::string& file, const std::string& reason) {
    return refused(cli::ExitCode::CannotWrite,
                   file + " can't be written: " + reason + "; choose another file or folder");
}

CommandRun runCommand(const std::vector<const char*>& arguments) {
    std::vector<const char*> argv = {"zeltag"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    const cli::ExitCode exit = cli::runProgram(static_cast<int>(argv.size()), argv.data());
    std::string err = ::testing::internal::GetCapturedStderr();
    return {exit, ::testing::internal::GetCapturedStdout(), std::move(err)};
}

std::shared_ptr<sim::TagReader> CommandLineTest::plugPlus(int configurations) {
    sim::TagOptions options;
    options.tagPlusConfigurations = configurations;
    return plugReader({sim::TagReader::kVendor, sim::TagReader::kProduct, "plus"}, options);
}

int CommandLineTest::connectReplies() {
    bus().takeTrace();
    USBConnect(nullptr);
    USBDisconnect();
    return occurrences("\n< ", bus().takeTrace());
}

int CommandLineTest::vainReplies() {
    bus().fail(0, sim::Fault::NoAnswer, kAlways);
    bus().takeTrace();
    run({"list"});
    return occurrences("! no answer", bus().takeTrace());
}

} // namespace zel::test
