// SPDX-License-Identifier: MIT
// Starts a program and waits for its end.
#include "sim/program/child.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::sim {

namespace {

constexpr int kBySignal = 128;

bool isNamed(std::string_view entry, const std::vector<std::string>& variables) {
    const std::string_view name = entry.substr(0, entry.find('=') + 1);
    for (const std::string& variable : variables)
        if (!name.empty() && variable.starts_with(name))
            return true;
    return false;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& variables) {
    std::vector<std::string> all = variables;
    for (char** entry = environ; *entry; ++entry)
        if (!isNamed(*entry, variables))
            all.emplace_back(*entry);
    return all;
}

Trouble notStarted(const std::string& program, int error) {
    return {error == ENOENT ? Exit::MissingFile : Exit::Failed,
            program + ": " + std::strerror(error), "name a program that can be run behind --"};
}

} // namespace

// The simulator ignores broken pipes; the program isn't to inherit that.
std::variant<Child, Trouble> Child::start(std::vector<std::string> arguments,
                                          const std::vector<std::string>& variables) {
    std::vector<std::string> texts = environmentWith(variables);
    std::vector<char*> environment = pointersTo(texts);
    std::vector<char*> argv = pointersTo(arguments);
    sigset_t defaults;
    sigemptyset(&defaults);
    sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigdefault(&attributes, &defaults);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    pid_t process = -1;
    const int error =
        posix_spawnp(&process, argv[0], nullptr, &attributes, argv.data(), environment.data());
    posix_spawnattr_destroy(&attributes);
    if (error != 0)
        return notStarted(arguments[0], error);
    return Child(process);
}

std::optional<int> Child::exitCode() {
    int status = 0;
    if (process_ < 0 || waitpid(process_, &status, WNOHANG) != process_)
        return {};
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : kBySignal + WTERMSIG(status);
}

void Child::send(int signal) const {
    if (process_ > 0)
        kill(process_, signal);
}

} // namespace zel::sim
