// SPDX-License-Identifier: MIT
// A filter that turns calls into SIGSYS, and the handler that makes them.
#include "tests/faults/trapped_calls.h"

#include "tests/faults/registers.h"
#include "tests/faults/watched_calls.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <dlfcn.h>
#include <link.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <span>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <utility>
#include <vector>

namespace zel::test {

namespace {

Kernel kernel = {};
const CallFailure* wanted = nullptr; // null: nothing is counted
TrapRecord* record = nullptr;
thread_local bool isInside = false; // of the handler: what it calls itself passes

bool isDue(long number) {
    const int count =
        __atomic_add_fetch(&record->counts[static_cast<std::size_t>(number)], 1, __ATOMIC_RELAXED);
    return number == wanted->number && count >= wanted->nth && count - wanted->nth < wanted->times;
}

long fail(long number, const CallArguments& arguments) {
    ++record->failures;
    const auto descriptor = static_cast<std::size_t>(arguments[0]);
    if (isAboutDescriptor(number) && descriptor < kWatchedDescriptors)
        record->failedAt.set(descriptor);
    kernel.fail(number, arguments);
    return -wanted->error;
}

long answer(long number, const CallArguments& arguments) {
    if (!wanted || isInside)
        return callKernel(number, arguments);
    const Untrapped own;
    return isDue(number) ? fail(number, arguments) : kernel.call(number, arguments);
}

// Where libc's code stands. The program calls the kernel through it, a sanitizer by itself.
struct Code {
    std::uintptr_t begin;
    std::uintptr_t end;

    bool has(const void* place) const {
        const auto address = reinterpret_cast<std::uintptr_t>(place);
        return address >= begin && address < end;
    }
};
Code libc = {};

int takeCode(dl_phdr_info* object, std::size_t, void*) {
    const void* const known = dlsym(RTLD_NEXT, "gnu_get_libc_version");
    for (const ElfW(Phdr) & part : std::span(object->dlpi_phdr, object->dlpi_phnum)) {
        const std::uintptr_t begin = object->dlpi_addr + part.p_vaddr;
        const Code code = {begin, begin + part.p_memsz};
        if (part.p_type == PT_LOAD && code.has(known))
            libc = code;
    }
    return 0;
}

void onTrap(int, siginfo_t* info, void* context) {
    const int error = errno;
    Registers registers(*static_cast<ucontext_t*>(context));
    const CallArguments arguments = registers.arguments();
    registers.setResult(libc.has(info->si_call_addr) ? answer(info->si_syscall, arguments)
                                                     : callKernel(info->si_syscall, arguments));
    errno = error;
}

bool handleTraps() {
    struct sigaction action = {};
    action.sa_sigaction = onTrap;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    return sigaction(SIGSYS, &action, nullptr) == 0;
}

sock_filter load(std::size_t offset) {
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}

// Passes the handler's own call, which returns to a known place; both halves of the address count.
void passOwnCall(std::vector<sock_filter>& filter) {
    constexpr std::size_t kPlace = offsetof(seccomp_data, instruction_pointer);
    const auto place = reinterpret_cast<std::uintptr_t>(behindOwnCall);
    filter.push_back(load(kPlace));
    filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(place), 0, 3));
    filter.push_back(load(kPlace + 4));
    filter.push_back(
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(place >> 32), 0, 1));
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
}

std::vector<sock_filter> filterOf(std::span<const long> numbers) {
    std::vector<sock_filter> filter;
    passOwnCall(filter);
    filter.push_back(load(offsetof(seccomp_data, nr)));
    for (const long number : numbers) {
        filter.push_back(
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(number), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    return filter;
}

} // namespace

long callKernel(long number, CallArguments arguments) {
    return ownCall(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                   arguments[5]);
}

bool trapCalls(std::span<const long> numbers, const Kernel& standIn) {
    kernel = standIn;
    dl_iterate_phdr(takeCode, nullptr);
    std::vector<sock_filter> filter = filterOf(numbers);
    const sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
    return handleTraps() && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

Trapping::Trapping(const CallFailure& failure, TrapRecord& counts) {
    record = &counts;
    wanted = &failure;
}

Trapping::~Trapping() { wanted = nullptr; }

Untrapped::Untrapped() : before_(std::exchange(isInside, true)) {}

Untrapped::~Untrapped() { isInside = before_; }

} // namespace zel::test
