// SPDX-License-Identifier: MIT
// The table of calls; what a processor hasn't is left out.
#include "tests/faults/watched_calls.h"

#include <algorithm>
#include <cerrno>
#include <sys/syscall.h>

namespace zel::test {

namespace {

using Errors = std::vector<int>;

const Errors kOpening = {EACCES, ENOENT, EINTR, EMFILE, ENFILE, ENOSPC, EROFS, EIO, ENODEV, EBUSY};
const Errors kMoving = {EACCES, EIO, ENOSPC, EROFS, EXDEV, EBUSY, EDQUOT};
const Errors kRemoving = {EACCES, EIO, EROFS, EBUSY};
const Errors kLooking = {EACCES, ENOENT, EIO, ENOMEM};
const Errors kModes = {EPERM, EIO, EROFS};

} // namespace

const std::vector<WatchedCall>& watchedCalls() {
    static const std::vector<WatchedCall> calls = {
        {"openat", SYS_openat, kOpening},
        {"read", SYS_read, {EIO, EINTR, EAGAIN, ENODEV, EISDIR}},
        {"write", SYS_write, {EIO, EINTR, EAGAIN, EPIPE, ENOSPC, EDQUOT}},
        {"writev", SYS_writev, {EIO, EINTR, ENOSPC, EDQUOT}},
        {"close", SYS_close, {EIO, EINTR, ENOSPC, EDQUOT}},
        {"ioctl", SYS_ioctl, {EIO, EINTR, EPIPE, ENODEV, ETIMEDOUT, EAGAIN, ENOMEM}},
        {"lseek", SYS_lseek, {ESPIPE, EIO}},
        {"ftruncate", SYS_ftruncate, {EIO, ENOSPC}},
        {"fsync", SYS_fsync, {EIO, ENOSPC, EDQUOT}},
        {"fstat", SYS_fstat, {EIO, ENOMEM}},
        {"newfstatat", SYS_newfstatat, kLooking},
        {"statx", SYS_statx, kLooking},
        {"faccessat", SYS_faccessat, kLooking},
        {"faccessat2", SYS_faccessat2, kLooking},
        {"getdents64", SYS_getdents64, {EIO, ENOENT}},
        {"readlinkat", SYS_readlinkat, {EACCES, EIO}},
        {"renameat2", SYS_renameat2, kMoving},
        {"unlinkat", SYS_unlinkat, kRemoving},
        {"fchmod", SYS_fchmod, kModes},
        {"fchmodat", SYS_fchmodat, kModes},
        {"socket", SYS_socket, {EMFILE, ENFILE, EACCES, ENOBUFS, EAFNOSUPPORT}},
        {"connect", SYS_connect, {ECONNREFUSED, ETIMEDOUT, ENETUNREACH, EHOSTUNREACH, EINTR}},
        {"sendto", SYS_sendto, {EPIPE, ECONNRESET, EINTR, EAGAIN, ENOBUFS, EPERM}},
        {"recvfrom", SYS_recvfrom, {ECONNRESET, EINTR, EAGAIN, ETIMEDOUT, ENOTCONN}},
        {"getsockopt", SYS_getsockopt, {ENOTSOCK, ENOBUFS}},
        {"setsockopt", SYS_setsockopt, {ENOPROTOOPT, ENOBUFS}},
        {"ppoll", SYS_ppoll, {EINTR, ENOMEM}},
#ifdef SYS_open
        {"open", SYS_open, kOpening},
        {"poll", SYS_poll, {EINTR, ENOMEM}},
        {"access", SYS_access, kLooking},
        {"readlink", SYS_readlink, {EACCES, EIO}},
        {"rename", SYS_rename, kMoving},
        {"unlink", SYS_unlink, kRemoving},
        {"chmod", SYS_chmod, kModes},
#endif
#ifdef SYS_renameat
        {"renameat", SYS_renameat, kMoving},
#endif
    };
    return calls;
}

const char* nameOfCall(long number) {
    const auto& calls = watchedCalls();
    const auto call = std::find_if(calls.begin(), calls.end(),
                                   [&](const auto& it) { return it.number == number; });
    return call == calls.end() ? "?" : call->name;
}

bool isAboutDescriptor(long number) {
    constexpr long kAbout[] = {SYS_read,     SYS_write,      SYS_writev,     SYS_close,
                               SYS_ioctl,    SYS_lseek,      SYS_ftruncate,  SYS_fsync,
                               SYS_fstat,    SYS_getdents64, SYS_fchmod,     SYS_sendto,
                               SYS_recvfrom, SYS_getsockopt, SYS_setsockopt, SYS_connect};
    return std::find(std::begin(kAbout), std::end(kAbout), number) != std::end(kAbout);
}

bool isRemoval(long number) { return std::string_view(nameOfCall(number)).starts_with("unlink"); }

} // namespace zel::test
