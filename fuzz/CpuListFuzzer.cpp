#include <algorithm>
#include <functional>

#include "Fuzzer.h"
#include "platform/linux/processor/CpuTopology.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto ids = platform::parseCpuList(text);
  if (!ids) return 0;
  fuzz::require(std::ranges::is_sorted(*ids, std::less_equal<>()));
  fuzz::require(ids->empty() || (ids->front() >= 0 && ids->back() <= 65535));
  std::string written;
  for (const std::int32_t id : *ids) written += (written.empty() ? "" : ",") + std::to_string(id);
  fuzz::require(platform::parseCpuList(written) == ids);
  return 0;
}
