#include "Fuzzer.h"
#include "platform/linux/storage/LinuxBlockStorage.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto counters = platform::parseBlockStat(fuzz::textOf(data, size));
  for (const auto& bytes : {counters.bytesRead, counters.bytesWritten}) {
    // Whole sectors, and few enough to add up the drives of a machine.
    fuzz::require(!bytes || (*bytes % 512 == 0 && *bytes <= std::uint64_t{1} << 57U));
  }
  return 0;
}
