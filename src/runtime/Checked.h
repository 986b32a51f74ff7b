#pragma once

#include <concepts>

namespace kestrune {

// Ends the process with one line on standard error that names what overflowed.
[[noreturn]] void endOnOverflow(const char* what);

// Integer arithmetic on platform counters. Overflow ends the process, because a wrapped figure would be
// shown, recorded and alerted on as if it were true.
template <std::integral T>
T checkedAdd(T a, T b, const char* what) {
  T result{};
  if (__builtin_add_overflow(a, b, &result)) endOnOverflow(what);
  return result;
}

template <std::integral T>
T checkedSubtract(T a, T b, const char* what) {
  T result{};
  if (__builtin_sub_overflow(a, b, &result)) endOnOverflow(what);
  return result;
}

template <std::integral T>
T checkedMultiply(T a, T b, const char* what) {
  T result{};
  if (__builtin_mul_overflow(a, b, &result)) endOnOverflow(what);
  return result;
}

}  // namespace kestrune
