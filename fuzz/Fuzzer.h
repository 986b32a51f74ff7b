#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace kestrune::fuzz {

// Ends the run with a finding unless the parser kept its promise.
inline void require(bool promise) {
  if (!promise) std::abort();
}

// A copy of exactly the input's size, so that reading beyond its end is found.
inline std::string textOf(const std::uint8_t* data, std::size_t size) {
  return {data, data + size};
}

}  // namespace kestrune::fuzz
