#pragma once

#include <cstdint>
#include <string>

namespace kestrune::ui {

// "1.5 GB", "300 MB", "12 KB": binary units, the same in every locale.
std::string formatBytes(std::uint64_t bytes);

// "0 B/s", "1.5 KB/s", "2.0 MB/s", "1.25 GB/s": binary units, the same in every locale. A negative rate
// counts as 0.
std::string formatRate(double bytesPerSecond);

// Units of 2^30 bytes.
double gibibytes(double bytes);

// "12.3 GB", "16 GB": units of 2^30 bytes with `fractionDigits` decimals.
std::string formatGibibytes(double gibibytes, int fractionDigits);

// The integer part of a percentage; 0 for NaN.
int wholePercent(double percent);

}  // namespace kestrune::ui
