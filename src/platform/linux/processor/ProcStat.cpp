#include "platform/linux/processor/ProcStat.h"

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr std::string_view prefix = "cpu";
constexpr std::size_t minStates = 4;  // of the oldest kernels

bool parseProcessor(std::string_view line, RawProcessor& processor) {
  FieldScanner fields(line.substr(prefix.size()));
  const auto id = fields.number<std::int32_t>();
  if (!id || *id < 0) return false;
  processor = {.id = *id, .ticks = {}};
  for (std::size_t state = 0; state < rawStates; ++state) {
    if (fields.atEnd()) return state >= minStates;
    const auto ticks = fields.number<std::uint64_t>();
    if (!ticks) return false;
    processor.ticks[state] = *ticks;
  }
  return true;
}

}  // namespace

bool parseProcStat(std::string_view text, std::vector<RawProcessor>& processors) {
  processors.clear();
  while (text.starts_with(prefix)) {
    const std::string_view line = takeLine(text);
    if (line.starts_with("cpu ")) continue;  // the sum of all
    if (!parseProcessor(line, processors.emplace_back())) return false;
  }
  const bool isCut = text.empty() || prefix.starts_with(text);
  return !isCut && !processors.empty();
}

}  // namespace kestrune::platform
