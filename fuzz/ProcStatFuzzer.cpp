#include "Fuzzer.h"
#include "platform/linux/processor/ProcStat.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  std::vector<platform::RawProcessor> processors;
  if (!platform::parseProcStat(text, processors)) return 0;
  fuzz::require(!processors.empty());
  for (const auto& processor : processors) fuzz::require(processor.id >= 0);

  // A truncated text is either refused or yields the same.
  std::vector<platform::RawProcessor> ofPart;
  for (const std::size_t length : {size / 2, size - 1}) {
    const bool isTaken = platform::parseProcStat(std::string_view(text).substr(0, length), ofPart);
    fuzz::require(!isTaken || ofPart == processors);
  }
  return 0;
}
