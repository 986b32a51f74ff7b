#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace kestrune::fuzz {

// Ends the run as a finding if the parser broke its promise.
inline void require(bool promise) {
  if (!promise) std::abort();
}

// A copy, so that reads past its end are found.
inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

}  // namespace kestrune::fuzz
