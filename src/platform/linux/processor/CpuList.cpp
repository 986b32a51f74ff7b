#include "platform/linux/processor/CpuList.h"

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr std::int32_t maxId = 65535;

bool addRange(std::string_view range, std::vector<std::int32_t>& ids) {
  const auto dash = range.find('-');
  const auto first = FieldScanner(range.substr(0, dash)).number<std::int32_t>();
  const auto last =
      dash == std::string_view::npos ? first : FieldScanner(range.substr(dash + 1)).number<std::int32_t>();
  if (!first || !last || *first < 0 || *last < *first || *last > maxId) return false;
  // The kernel lists ids in ascending order.
  if (!ids.empty() && *first <= ids.back()) return false;
  for (std::int32_t id = *first; id <= *last; ++id) ids.push_back(id);
  return true;
}

}  // namespace

std::optional<std::vector<std::int32_t>> parseCpuList(std::string_view text) {
  text = trimmed(text);
  std::vector<std::int32_t> ids;
  if (text.ends_with(',')) return std::nullopt;
  while (!text.empty()) {
    if (!addRange(takePart(text, ','), ids)) return std::nullopt;
  }
  return ids;
}

}  // namespace kestrune::platform
