#pragma once

#include <compare>

namespace kestrune {

// An instant of the wall clock: seconds since 2001-01-01T00:00:00Z, negative before it.
struct Date {
  double seconds = 0;

  static const Date distantPast;

  friend constexpr auto operator<=>(Date, Date) = default;
  friend constexpr double operator-(Date later, Date earlier) { return later.seconds - earlier.seconds; }
  friend constexpr Date operator+(Date date, double interval) { return {date.seconds + interval}; }
};

// 0001-01-01: earlier than any date that a clock returns.
inline constexpr Date Date::distantPast{-63114076800.0};

// The reference instant of Date on the Unix time scale.
inline constexpr double unixTimeOfReferenceDate = 978307200.0;

}  // namespace kestrune
