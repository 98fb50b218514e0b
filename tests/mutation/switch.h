// SPDX-License-Identifier: MIT
// What a mutated file is written in terms of: each point of it has a number, and the one whose
// number is chosen does something else. None is chosen during constant evaluation.
#pragma once

#include <type_traits>

namespace zel::mutation {

// Notes that a point was reached, and tells whether it is the chosen one.
bool isChosen(int point);

constexpr bool departs(int point) { return !std::is_constant_evaluated() && isChosen(point); }

// A condition, or its opposite.
template <class Truth> constexpr bool flip(int point, Truth&& truth) {
    return departs(point) ? !static_cast<bool>(truth) : static_cast<bool>(truth);
}

// Whether a statement is carried out.
constexpr bool keeps(int point) { return !departs(point); }

template <class Number> constexpr Number number(int point, Number value) {
    return departs(point) ? static_cast<Number>(value + 1) : value;
}

// An operator, and for the next numbers what stands in its place. Types that lack the other
// operator keep their own. Operands of arithmetic come by value: an array as a pointer to its
// elements.
#define ZEL_MUTATED(point, usual, other)                                                           \
    if constexpr (requires { left other right; }) {                                                \
        if (departs(point))                                                                        \
            return static_cast<decltype(left usual right)>(left other right);                      \
    }
#define ZEL_MUTATED_OPERATOR(name, usual, other, third)                                            \
    template <class Left, class Right>                                                             \
    constexpr auto name(int point, const Left& left, const Right& right) {                         \
        ZEL_MUTATED(point, usual, other)                                                           \
        ZEL_MUTATED(point + 1, usual, third)                                                       \
        return left usual right;                                                                   \
    }
#define ZEL_MUTATED_NUMBER(name, usual, other)                                                     \
    template <class Left, class Right> constexpr auto name(int point, Left left, Right right) {    \
        ZEL_MUTATED(point, usual, other)                                                           \
        return left usual right;                                                                   \
    }
#define ZEL_MUTATED_PAIR(name, usual, other)                                                       \
    template <class Left, class Right>                                                             \
    constexpr auto name(int point, const Left& left, const Right& right) {                         \
        ZEL_MUTATED(point, usual, other)                                                           \
        return left usual right;                                                                   \
    }

ZEL_MUTATED_OPERATOR(less, <, <=, >=)
ZEL_MUTATED_OPERATOR(greater, >, >=, <=)
ZEL_MUTATED_OPERATOR(notGreater, <=, <, >)
ZEL_MUTATED_OPERATOR(notLess, >=, >, <)
ZEL_MUTATED_PAIR(equal, ==, !=)
ZEL_MUTATED_PAIR(notEqual, !=, ==)
ZEL_MUTATED_NUMBER(plus, +, -)
ZEL_MUTATED_NUMBER(minus, -, +)
ZEL_MUTATED_NUMBER(times, *, /)
ZEL_MUTATED_NUMBER(dividedBy, /, *)
ZEL_MUTATED_NUMBER(rest, %, *)
ZEL_MUTATED_NUMBER(bothBits, &, |)
ZEL_MUTATED_NUMBER(anyBits, |, &)
ZEL_MUTATED_NUMBER(otherBits, ^, &)
ZEL_MUTATED_NUMBER(shiftedLeft, <<, >>)
ZEL_MUTATED_NUMBER(shiftedRight, >>, <<)

#undef ZEL_MUTATED
#undef ZEL_MUTATED_OPERATOR
#undef ZEL_MUTATED_NUMBER
#undef ZEL_MUTATED_PAIR

} // namespace zel::mutation
