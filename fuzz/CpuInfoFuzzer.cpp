#include <algorithm>
#include <utility>

#include "Fuzzer.h"
#include "platform/linux/processor/CpuInfo.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto info = platform::parseCpuInfo(text);
  const auto lines = std::ranges::count(text, '\n') + 1;
  fuzz::require(info.processors >= 0 && info.processors <= lines);
  fuzz::require(info.physicalCores >= 0 && info.physicalCores <= 65536);
  fuzz::require(std::cmp_less_equal(info.armCores.size(), lines));
  for (const std::string& name : {info.modelName, info.hardware}) {
    fuzz::require(name.find("  ") == std::string::npos && !name.starts_with(' ') && !name.ends_with(' '));
    fuzz::require(name.find_first_of("\t\n") == std::string::npos);
  }
  fuzz::require(info.armCores.empty() || platform::armCoreNames({info.armCores.front()}).size() < 40);
  return 0;
}
