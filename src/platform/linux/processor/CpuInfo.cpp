#include "platform/linux/processor/CpuInfo.h"

#include <algorithm>
#include <optional>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

std::string withSingleBlanks(std::string_view text) {
  std::string tidy;
  for (const char c : trimmed(text)) {
    const bool isBlank = c == ' ' || c == '\t';
    if (isBlank && tidy.ends_with(' ')) continue;
    tidy += isBlank ? ' ' : c;
  }
  return tidy;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCased) {
  return std::ranges::equal(text, lowerCased, {}, lowerCase);
}

template <class T>
std::optional<T> number(std::string_view text) {
  const bool isHex = text.starts_with("0x");
  if (isHex) text.remove_prefix(2);
  return parseNumber<T>(text, isHex ? 16 : 10);
}

// Collects the lines. Those of one processor follow each other, and in this order.
class Collector {
 public:
  void line(std::string_view key, std::string_view value) {
    if (key == "processor") {
      if (number<std::int32_t>(value)) ++info_.processors;
    } else if (equalsIgnoringCase(key, "model name")) {
      if (info_.modelName.empty()) info_.modelName = withSingleBlanks(value);
    } else if (key == "Hardware") {
      info_.hardware = withSingleBlanks(value);
    } else if (key == "physical id") {
      package_ = number<std::int32_t>(value);
    } else if (key == "cpu cores") {
      addPackage(number<std::int32_t>(value));
    } else if (key == "CPU implementer") {
      implementer_ = number<std::uint32_t>(value);
    } else if (key == "CPU part") {
      addArmCore(number<std::uint32_t>(value));
    }
  }

  CpuInfo take() { return std::move(info_); }

 private:
  void addPackage(std::optional<std::int32_t> cores) {
    constexpr std::int32_t maxCores = 65536;
    const std::int32_t package = package_.value_or(0);
    if (!cores || *cores < 1 || *cores > maxCores - info_.physicalCores) return;
    if (std::ranges::find(packages_, package) != packages_.end()) return;
    packages_.push_back(package);
    info_.physicalCores += *cores;
  }

  void addArmCore(std::optional<std::uint32_t> part) {
    if (!implementer_ || !part) return;
    const ArmCore core{*implementer_, *part};
    if (std::ranges::find(info_.armCores, core) == info_.armCores.end()) info_.armCores.push_back(core);
  }

  CpuInfo info_;
  std::vector<std::int32_t> packages_;
  std::optional<std::int32_t> package_;
  std::optional<std::uint32_t> implementer_;
};

}  // namespace

CpuInfo parseCpuInfo(std::string_view text) {
  Collector collector;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    const auto colon = line.find(':');
    if (colon != std::string_view::npos) {
      collector.line(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
  }
  return collector.take();
}

}  // namespace kestrune::platform
