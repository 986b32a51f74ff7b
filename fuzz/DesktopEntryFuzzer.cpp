#include <algorithm>

#include "Fuzzer.h"
#include "platform/linux/applications/AppIdentity.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/processes/ProgramName.h"

using namespace kestrune;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);

  if (const auto entry = platform::parseDesktopEntry(text, {"es_MX", "es"})) {
    for (const std::string& value : {entry->name, entry->icon, entry->exec, entry->tryExec}) {
      fuzz::require(value.size() <= size);
    }
    const auto arguments = platform::execArguments(entry->exec);
    std::size_t length = 0;
    for (const std::string& argument : arguments) length += argument.size();
    fuzz::require(length <= entry->exec.size());
    const auto program = platform::programIn(arguments);
    fuzz::require(program.empty() || std::ranges::find(arguments, program) != arguments.end());
  }

  const auto unit = platform::parseAppCgroup(text);
  fuzz::require(!unit || (!unit->id.empty() && unit->id.size() < size));
  fuzz::require(platform::parseFlatpakId(text).find('\n') == std::string::npos);
  const auto names = platform::localeNames(text);
  fuzz::require(names.size() <= 4);
  return 0;
}
