#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace kestrune::bench {

// Wall time of a call, in seconds.
template <class Call>
double secondsOf(Call call) {
  const auto begun = std::chrono::steady_clock::now();
  call();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
}

// 0 without values.
inline double median(std::vector<double> values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

}  // namespace kestrune::bench
