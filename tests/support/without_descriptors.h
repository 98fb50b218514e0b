// SPDX-License-Identifier: MIT
// A call for which the process gets no further descriptor.
#pragma once

#include <sys/resource.h>

namespace zel::test {

// Its result. A sanitizer needs descriptors too, so the call must use no object with virtual
// functions.
template <class Call> int withoutDescriptors(Call call) {
    rlimit before = {};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = 0;
    setrlimit(RLIMIT_NOFILE, &none);
    const int result = call();
    setrlimit(RLIMIT_NOFILE, &before);
    return result;
}

} // namespace zel::test
