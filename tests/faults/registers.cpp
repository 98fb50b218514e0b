// SPDX-License-Identifier: MIT
// The system call from a known place, in the words of each processor.
#include "tests/faults/registers.h"

#if defined(__x86_64__)
asm(R"(
    .text
    .globl ownCall
    .type ownCall, @function
ownCall:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
    .globl behindOwnCall
behindOwnCall:
    ret
    .size ownCall, .-ownCall
)");
#elif defined(__aarch64__)
asm(R"(
    .text
    .globl ownCall
    .type ownCall, %function
ownCall:
    mov x8, x0
    mov x0, x1
    mov x1, x2
    mov x2, x3
    mov x3, x4
    mov x4, x5
    mov x5, x6
    svc #0
    .globl behindOwnCall
behindOwnCall:
    ret
    .size ownCall, .-ownCall
)");
#endif
