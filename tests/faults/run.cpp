// SPDX-License-Identifier: MIT
// A process that forks from the test and acts as the command line's program does.
#include "tests/faults/run.h"

#include "cli/main/program.h"
#include "tests/faults/machine.h"
#include "tests/faults/watched_calls.h"
#include "tests/support/descriptors.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::test {

namespace {

constexpr unsigned kLongest = 20; // seconds of a run; then it hangs

std::string takeText(int file) {
    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    const ssize_t size = pread(file, text.data(), text.size(), 0);
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    if (ftruncate(file, 0) != 0 || lseek(file, 0, SEEK_SET) != 0)
        std::abort();
    return text;
}

std::vector<std::string> wordsOf(const Scene& scene, const std::string& bridge) {
    std::vector<std::string> words = scene.words;
    words.insert(words.begin(), "zeltag");
    std::replace(words.begin(), words.end(), std::string("@"), bridge.substr(0, bridge.find(':')));
    if (scene.place == Scene::Place::Line)
        words.insert(words.end(), {"--port", Machine::kLine});
    if (scene.place == Scene::Place::Bridge && scene.words.front() != "net")
        words.insert(words.end(), {"--tcp", bridge});
    return words;
}

bool trapWatchedCalls() {
    std::vector<long> numbers;
    for (const WatchedCall& call : watchedCalls())
        numbers.push_back(call.number);
    return trapCalls(numbers, Machine::kernel());
}

int runWatched(const std::vector<std::string>& words, const CallFailure& failure,
               TrapRecord& calls) {
    std::vector<const char*> argv;
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    const Trapping trapping(failure, calls);
    return static_cast<int>(cli::runProgram(static_cast<int>(argv.size()), argv.data()));
}

} // namespace

SceneRunner::SceneRunner(std::string root)
    : root_(std::move(root)), out_(memfd_create("out", MFD_CLOEXEC)),
      err_(memfd_create("err", MFD_CLOEXEC)),
      account_(new (mmap(nullptr, sizeof(Account), PROT_READ | PROT_WRITE,
                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)) Account) {
    Machine::furnish(root_);
}

SceneRunner::~SceneRunner() {
    close(out_);
    close(err_);
    munmap(account_, sizeof *account_);
}

SceneRun SceneRunner::run(const Scene& scene, const CallFailure& failure) {
    furnishFolder();
    *account_ = {};
    const pid_t process = fork();
    if (process < 0)
        std::abort();
    if (process == 0)
        act(scene, failure);
    int status = 0;
    waitpid(process, &status, 0);
    const int exit = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return {exit, takeText(out_), takeText(err_), filesHere(), *account_};
}

void SceneRunner::act(const Scene& scene, const CallFailure& failure) {
    alarm(kLongest);
    std::signal(SIGPIPE, SIG_IGN); // as in the program
    dup2(out_, STDOUT_FILENO);
    dup2(err_, STDERR_FILENO);
    const auto before = openDescriptors();
    const auto reader = readerOf(scene);
    std::optional<Machine> machine(std::in_place, root_, reader, scene.place);
    const auto words = wordsOf(scene, machine->bridge());
    account_->isTrapped = trapWatchedCalls();
    const int exit = account_->isTrapped ? runWatched(words, failure, account_->calls) : 0;
    account_->memory = machine->memory();
    machine.reset();
    for (const int descriptor : openDescriptors())
        account_->leftOpen += before.count(descriptor) == 0;
    std::fflush(nullptr);
    _exit(exit);
}

} // namespace zel::test
