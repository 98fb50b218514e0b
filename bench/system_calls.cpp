// SPDX-License-Identifier: MIT
// A seccomp filter that turns each system call into a signal, and the signal's handler that counts.
#include "bench/system_calls.h"

#include <csignal>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

namespace zel::bench {

namespace {

volatile long clockCalls = 0;
volatile long otherCalls = 0;

void onSystemCall(int, siginfo_t* info, void*) {
    const bool asksClock =
        info->si_syscall == SYS_gettimeofday || info->si_syscall == SYS_clock_gettime;
    volatile long& count = asksClock ? clockCalls : otherCalls;
    count = count + 1;
}

// The handler's own return is a system call too.
bool installFilter() {
    sock_filter steps[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0), // the number, first in struct seccomp_data
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rt_sigreturn, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {std::size(steps), steps};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

bool trapSystemCalls() {
    struct sigaction action = {};
    action.sa_sigaction = onSystemCall;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGSYS, &action, nullptr) == 0 && installFilter();
}

SystemCallCount systemCallCount() { return {clockCalls, otherCalls}; }

} // namespace zel::bench
