// SPDX-License-Identifier: MIT
// Starts the command line with pipes at its ends.
#include "tests/cli/run_program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <ostream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace zel::test {

namespace {

struct Pipe {
    Pipe() {
        if (pipe2(end, O_CLOEXEC) != 0)
            std::abort();
    }
    int end[2] = {-1, -1}; // to read, to write
};

void closeEnd(int& fd) {
    if (fd >= 0)
        close(std::exchange(fd, -1));
}

std::string readAll(int fd) {
    std::string text;
    char part[512];
    for (ssize_t size = 0; fd >= 0 && (size = read(fd, part, sizeof part)) > 0;)
        text.append(part, static_cast<std::size_t>(size));
    return text;
}

void direct(posix_spawn_file_actions_t& actions, Stdout where, Pipe& out) {
    if (where == Stdout::PipeWithoutReader)
        closeEnd(out.end[0]);
    if (where == Stdout::Captured || where == Stdout::PipeWithoutReader)
        posix_spawn_file_actions_adddup2(&actions, out.end[1], STDOUT_FILENO);
    else if (where == Stdout::FullDisk)
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/full", O_WRONLY, 0);
    else
        posix_spawn_file_actions_addclose(&actions, STDOUT_FILENO);
}

// A test that runs in the background may have been told to ignore Ctrl-C; the program is not.
void useDefaultSignals(posix_spawnattr_t& attributes) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGPIPE})
        sigaddset(&signals, signal);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
}

} // namespace

void PrintTo(const Ended& run, std::ostream* stream) {
    *stream << "exit " << run.exit << "\nstdout: " << run.out << "\nstderr: " << run.err;
}

RunningProgram::RunningProgram(const Arguments& arguments, Stdout where)
    : RunningProgram(ZELTAG_PROGRAM, arguments, where) {}

RunningProgram::RunningProgram(std::string program, const Arguments& arguments, Stdout where) {
    Arguments copies = arguments;
    std::vector<char*> argv = {program.data()};
    for (std::string& argument : copies)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    Pipe out;
    Pipe err;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    direct(actions, where, out);
    posix_spawn_file_actions_adddup2(&actions, err.end[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    useDefaultSignals(attributes);
    if (posix_spawn(&process_, program.c_str(), &actions, &attributes, argv.data(), environ) != 0)
        std::abort();
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    closeEnd(out.end[1]);
    closeEnd(err.end[1]);
    out_ = out.end[0];
    err_ = err.end[0];
}

RunningProgram::~RunningProgram() {
    if (process_ >= 0) {
        send(SIGKILL);
        finish();
    }
}

std::string RunningProgram::readLine() {
    std::string line;
    for (char next = 0; read(out_, &next, 1) == 1 && next != '\n';)
        line += next;
    return line;
}

void RunningProgram::closeStdout() { closeEnd(out_); }

void RunningProgram::send(int signal) const { kill(process_, signal); }

Ended RunningProgram::finish() {
    Ended run;
    run.out = readAll(out_);
    run.err = readAll(err_);
    closeEnd(out_);
    closeEnd(err_);
    int status = 0;
    waitpid(std::exchange(process_, -1), &status, 0);
    run.exit = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return run;
}

Ended runZeltag(const Arguments& arguments, Stdout where) {
    return RunningProgram(arguments, where).finish();
}

} // namespace zel::test
