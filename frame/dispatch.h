// SPDX-License-Identifier: MIT
// The exported calls' way to the family that serves the active device.
#pragma once

#include "frame/state.h"

namespace zel {

// Calls the proximity reader's operation when such a reader is active; else the unsupported value.
template <class Operation, class... Arguments>
auto forTag(Operation operation, Arguments... arguments) {
    using Result = decltype(operation(arguments...));
    return hasActiveTag() ? operation(arguments...) : static_cast<Result>(unsupportedValue());
}

// The same with another result where nothing serves the call.
template <class Result, class Operation, class... Arguments>
Result forTagOr(Result otherwise, Operation operation, Arguments... arguments) {
    return hasActiveTag() ? operation(arguments...) : otherwise;
}

// Calls the operation with any active device, whatever its product; else the unsupported value.
template <class Operation, class... Arguments>
auto forDevice(Operation operation, Arguments... arguments) {
    using Result = decltype(operation(arguments...));
    return hasActiveDevice() ? operation(arguments...) : static_cast<Result>(unsupportedValue());
}

// The same with another result where there is none.
template <class Result, class Operation, class... Arguments>
Result forDeviceOr(Result otherwise, Operation operation, Arguments... arguments) {
    return hasActiveDevice() ? operation(arguments...) : otherwise;
}

} // namespace zel
