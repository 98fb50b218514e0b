// SPDX-License-Identifier: MIT
// The exported calls' way to the family that serves the active device.
#pragma once

#include "frame/state/state.h"

#include <type_traits>

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

// Whether one of the families serves the active device.
inline bool isServed() {
    const std::uint32_t product = activeProduct();
    return product == kTag || product == kBand || product == kEcho;
}

// Calls the operation of the active device's family, where that has one; a null one stands for
// none. Else the result given, or the unsupported value.
template <class Result, class... Parameters, class... Arguments>
Result forFamilyOr(Result otherwise, Result (*tag)(Parameters...),
                   std::type_identity_t<Result (*)(Parameters...)> band,
                   std::type_identity_t<Result (*)(Parameters...)> echo, Arguments... arguments) {
    const std::uint32_t product = activeProduct();
    const auto operation = product == kTag    ? tag
                           : product == kBand ? band
                           : product == kEcho ? echo
                                              : nullptr;
    return operation ? operation(arguments...) : otherwise;
}

template <class Result, class... Parameters, class... Arguments>
Result forFamily(Result (*tag)(Parameters...), std::type_identity_t<Result (*)(Parameters...)> band,
                 std::type_identity_t<Result (*)(Parameters...)> echo, Arguments... arguments) {
    return forFamilyOr(static_cast<Result>(unsupportedValue()), tag, band, echo, arguments...);
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
