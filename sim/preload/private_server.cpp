// SPDX-License-Identifier: MIT
// Finds the program beside this object and starts it.
#include "sim/preload/private_server.h"

#include "sim/link/descriptor.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <vector>

namespace zel::sim {

namespace {

constexpr int kLifeline = 3; // the server's descriptor

// The folder of this object.
std::string ownFolder() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&startPrivateServer), &info) == 0 || !info.dli_fname)
        return {};
    const std::string path = info.dli_fname;
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

// lib/ of a build and lib/TRIPLET/zeltag/ of an installation are so far from bin/.
std::string programPath() {
    for (const char* const way : {"/../bin/zelsim", "/../../bin/zelsim", "/../../../bin/zelsim"}) {
        std::string path = ownFolder() + way;
        if (access(path.c_str(), X_OK) == 0)
            return path;
    }
    return {};
}

std::string newFolder() {
    const char* const place = std::getenv("TMPDIR");
    std::string folder = std::string(place && *place ? place : "/tmp") + "/zelsim-XXXXXX";
    return mkdtemp(folder.data()) ? folder : std::string();
}

struct Pipe {
    Pipe() {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            return;
        for (const int end : ends)
            fcntl(end, F_SETFD, FD_CLOEXEC);
        reading.reset(ends[0]);
        writing.reset(ends[1]);
    }
    Descriptor reading;
    Descriptor writing;
};

// The server isn't to be preloaded with this object again.
std::vector<char*> environmentWithoutPreload() {
    std::vector<char*> kept;
    for (char** entry = environ; *entry; ++entry)
        if (!std::string_view(*entry).starts_with("LD_PRELOAD="))
            kept.push_back(*entry);
    kept.push_back(nullptr);
    return kept;
}

bool spawn(std::vector<std::string> arguments, const Pipe& out, const Pipe& lifeline) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out.writing.number(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, lifeline.reading.number(), kLifeline);
    std::vector<char*> environment = environmentWithoutPreload();
    pid_t child = -1;
    const int error =
        posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    // It goes to the background: an application that waits for its children doesn't see it.
    if (error == 0)
        waitpid(child, nullptr, 0);
    return error == 0;
}

// The server writes a line when it listens.
bool awaitLine(const Descriptor& from) {
    char next = 0;
    while (read(from.number(), &next, 1) == 1)
        if (next == '\n')
            return true;
    return false;
}

std::string complain(const char* what) {
    std::fprintf(stderr, "zelsim: no simulator for ZELSIM_SCENARIO: %s\n", what);
    return {};
}

} // namespace

std::string startPrivateServer(const std::string& scenario) {
    const std::string program = programPath();
    if (program.empty())
        return complain("the program zelsim isn't beside libzelsim.so");
    const std::string folder = newFolder();
    if (folder.empty())
        return complain(std::strerror(errno));
    std::string socket = folder + "/zelsim.sock";
    Pipe out;
    Pipe lifeline;
    if (!spawn(
            {program, "run", scenario, "--socket", socket, "--lifeline", std::to_string(kLifeline)},
            out, lifeline))
        return complain(std::strerror(errno));
    out.writing.reset();
    if (awaitLine(out.reading)) {
        lifeline.writing.release(); // open until this process ends
        return socket;
    }
    rmdir(folder.c_str());
    return {};
}

} // namespace zel::sim
