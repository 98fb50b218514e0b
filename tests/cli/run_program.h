// SPDX-License-Identifier: MIT
// Runs the built command line as a user would, with its own stdout and stderr.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace zel::test {

using Arguments = std::vector<std::string>;

struct Ended {
    int exit = 0; // the exit code; minus the signal that ended the program
    std::string out;
    std::string err;

    bool operator==(const Ended&) const = default;
};

void PrintTo(const Ended& run, std::ostream* stream);

enum class Stdout { Captured, FullDisk, Closed, PipeWithoutReader };

class RunningProgram {
public:
    explicit RunningProgram(const Arguments& arguments, Stdout where = Stdout::Captured);
    RunningProgram(std::string program, const Arguments& arguments,
                   Stdout where = Stdout::Captured);
    ~RunningProgram();
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;

    // The next line of stdout, without its end; empty at the end of stdout.
    std::string readLine();
    void closeStdout();
    void send(int signal) const;

    // What was not read yet, once the program has ended.
    Ended finish();

private:
    pid_t process_ = -1;
    int out_ = -1;
    int err_ = -1;
};

Ended runZeltag(const Arguments& arguments, Stdout where = Stdout::Captured);

inline bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

} // namespace zel::test
