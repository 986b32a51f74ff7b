#include "ui/pages/FileTypes.h"

#include <algorithm>
#include <cctype>
#include <map>

#include "runtime/Utf8.h"
#include "ui/components/Card.h"
#include "ui/components/Dashboard.h"
#include "ui/components/Formatters.h"
#include "ui/components/Gauges.h"
#include "ui/view/View.h"

namespace kestrune::ui {
namespace {

constexpr std::size_t maxTypes = 5;

// The part after the last dot, unless that is the first or the last byte; ASCII letters in capitals.
std::string extensionKey(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size()) return "—";
  std::string extension(name.substr(dot + 1));
  for (char& c : extension) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return repairedUtf8(extension);
}

View typeLine(const std::string& extension, std::uint64_t bytes, double ofLargest) {
  return hstack(
      innerSpacing, VerticalAlignment::center,
      views(verbatim(extension).withFont(14).withLineLimit(1).width(50, HorizontalAlignment::leading),
            shareBar(ofLargest, Color(ColorRole::secondary, 0.45), 8).fillWidth(),
            verbatim(formatBytes(bytes)).withMonospacedDigits(11).width(70, HorizontalAlignment::trailing)));
}

}  // namespace

FileTypes largestFileTypes(const FolderItems& items) {
  std::map<std::string, std::uint64_t> totals;
  for (const FolderItem& item : items) {
    if (!item.isDirectory && item.sizeBytes.value_or(0) > 0) {
      totals[extensionKey(item.url.name())] += *item.sizeBytes;
    }
  }
  FileTypes types(totals.begin(), totals.end());
  std::ranges::stable_sort(types, std::ranges::greater(), &FileTypes::value_type::second);
  types.resize(std::min(types.size(), maxTypes));
  return types;
}

View fileTypesCard(const FileTypes& types) {
  if (types.empty()) return {};
  const auto largest = static_cast<double>(types.front().second);
  std::vector<View> lines = views(sectionHeader(text("File types")));
  for (const auto& [extension, bytes] : types) {
    lines.push_back(typeLine(extension, bytes, static_cast<double>(bytes) / largest));
  }
  lines.push_back(caption(text("File types for direct children only — not recursive."), ColorRole::tertiary));
  return Card{section(std::move(lines))};
}

}  // namespace kestrune::ui
