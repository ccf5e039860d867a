// Arithmetic on sizes and offsets. The result is exact or the process ends.

#pragma once

#include <type_traits>

#include "Helper/base/Check.h"

namespace android::base {

template <typename T>
T checkedAdd(T left, std::type_identity_t<T> right) {
    T result;
    if (__builtin_add_overflow(left, right, &result)) fatalOverflow();
    return result;
}

template <typename T>
T checkedSub(T left, std::type_identity_t<T> right) {
    T result;
    if (__builtin_sub_overflow(left, right, &result)) fatalOverflow();
    return result;
}

template <typename T>
T checkedMul(T left, std::type_identity_t<T> right) {
    T result;
    if (__builtin_mul_overflow(left, right, &result)) fatalOverflow();
    return result;
}

// The same number in another type.
template <typename To, typename From>
To checkedCast(From value) {
    To result;
    if (__builtin_add_overflow(value, From{0}, &result)) fatalOverflow();
    return result;
}

}  // namespace android::base
