#include "Fuzzer.h"
#include "platform/linux/memory/LinuxMemory.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto isFromText = [&text](const std::optional<std::uint64_t>& bytes, std::uint64_t bytesPerUnit) {
    return !bytes || text.find(std::to_string(*bytes / bytesPerUnit)) != std::string::npos;
  };
  const auto info = platform::parseMemInfo(text);
  for (const auto& figure : {info.memTotal, info.memAvailable, info.memFree, info.buffers, info.cached,
                             info.shmem, info.anonPages, info.zswap, info.swapTotal, info.swapFree}) {
    fuzz::require(isFromText(figure, 1024));
  }
  fuzz::require(isFromText(platform::parseZramUsage(text), 1));
  return 0;
}
