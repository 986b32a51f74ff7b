#include "Fuzzer.h"
#include "platform/linux/memory/MemInfo.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto isFromText = [&text](const std::optional<std::uint64_t>& figure) {
    return !figure || text.find(std::to_string(*figure)) != std::string::npos;
  };
  const auto info = platform::parseMemInfo(text);
  for (const auto& figure : {info.memTotal, info.memAvailable, info.memFree, info.buffers, info.cached,
                             info.shmem, info.anonPages, info.zswap, info.swapTotal, info.swapFree}) {
    fuzz::require(isFromText(figure));
  }
  fuzz::require(isFromText(platform::parseZramUsage(text)));
  return 0;
}
