#include "Fuzzer.h"
#include "platform/linux/processes/PidStat.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const auto stat = platform::parsePidStat(text);
  if (stat) {
    fuzz::require(text.find("(" + std::string(stat->name) + ")") != std::string::npos);
    // A truncated text that still parses yields the same figures.
    const auto ofPart = platform::parsePidStat(std::string_view(text).substr(0, size - 1));
    fuzz::require(!ofPart || ofPart->name != stat->name || ofPart->residentPages == stat->residentPages);
  }

  // The first line as a name, the next as a path, the rest as a command line.
  const auto first = text.find('\n');
  const auto second = text.find('\n', first + 1);
  if (first == std::string::npos || second == std::string::npos) return 0;
  const std::string_view all(text);
  const auto name = all.substr(0, first);
  const auto completed =
      platform::completedName(name, all.substr(first + 1, second - first - 1), all.substr(second + 1));
  fuzz::require(completed.starts_with(name));
  return 0;
}
