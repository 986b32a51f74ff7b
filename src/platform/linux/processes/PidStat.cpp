#include "platform/linux/processes/PidStat.h"

#include "platform/linux/files/FieldScanner.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// Positions of fields in the line, counted from 1 as in the kernel's documentation.
enum Field {
  stateField = 3,
  flagsField = 9,
  userField = 14,
  systemField = 15,
  startField = 22,
  residentField = 24
};

constexpr std::uint64_t kernelThreadFlag = 0x00200000;

// Reads the fields after the name, moving forward only.
class Fields {
 public:
  explicit Fields(std::string_view text) : scanner_(text) {}

  std::optional<std::uint64_t> at(Field wanted) {
    for (; next_ < wanted; ++next_) scanner_.field();
    ++next_;
    return scanner_.number<std::uint64_t>();
  }
  bool isTruncated() const { return scanner_.rest().empty(); }

 private:
  FieldScanner scanner_;
  int next_ = stateField;
};

std::string_view takeArgument(std::string_view& commandLine) {
  return takePart(commandLine, '\0');
}

}  // namespace

std::optional<PidStat> parsePidStat(std::string_view text) {
  const auto open = text.find('(');
  const auto close = text.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;

  Fields fields(text.substr(close + 1));
  const auto flags = fields.at(flagsField);
  const auto user = fields.at(userField);
  const auto system = fields.at(systemField);
  const auto start = fields.at(startField);
  const auto resident = fields.at(residentField);
  if (!flags || !user || !system || !start || !resident || fields.isTruncated()) return std::nullopt;
  return PidStat{.name = text.substr(open + 1, close - open - 1),
                 .isKernelThread = (*flags & kernelThreadFlag) != 0,
                 .userTicks = *user,
                 .systemTicks = *system,
                 .startTime = *start,
                 .residentPages = *resident};
}

std::string_view completedName(std::string_view name, std::string_view executablePath,
                               std::string_view commandLine) {
  if (baseName(executablePath).starts_with(name)) return baseName(executablePath);
  const std::string_view program = baseName(takeArgument(commandLine));
  if (program.starts_with(name)) return program;
  // A script follows its interpreter's options.
  while (commandLine.starts_with('-')) takeArgument(commandLine);
  const std::string_view script = baseName(takeArgument(commandLine));
  return script.starts_with(name) ? script : name;
}

}  // namespace kestrune::platform
