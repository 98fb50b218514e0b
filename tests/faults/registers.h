// SPDX-License-Identifier: MIT
// How a processor makes a system call: where the arguments stand, and a call from a known place.
#pragma once

#include "tests/faults/trapped_calls.h"

#include <sys/syscall.h>
#include <ucontext.h>

extern "C" {
// A system call whose place the filter knows; the result is an errno negated when it failed.
long ownCall(long number, long a, long b, long c, long d, long e, long f);
extern const char behindOwnCall[]; // the instruction behind it
}

namespace zel::test {

class Registers {
public:
    explicit Registers(ucontext_t& context) : machine_(context.uc_mcontext) {}

#if defined(__x86_64__)
    CallArguments arguments() const {
        const auto& all = machine_.gregs;
        return {all[REG_RDI], all[REG_RSI], all[REG_RDX], all[REG_R10], all[REG_R8], all[REG_R9]};
    }
    void setResult(long result) { machine_.gregs[REG_RAX] = result; }
#else
    CallArguments arguments() const {
        CallArguments all;
        for (std::size_t index = 0; index < all.size(); ++index)
            all[index] = static_cast<long>(machine_.regs[index]);
        return all;
    }
    void setResult(long result) { machine_.regs[0] = static_cast<unsigned long long>(result); }
#endif

private:
    mcontext_t& machine_;
};

} // namespace zel::test
