#include "platform/linux/LinuxLoginItem.h"

#include <cerrno>
#include <cstring>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "platform/linux/AtomicFile.h"
#include "platform/linux/Files.h"

namespace kestrune::linux_platform {
namespace {

constexpr const char* noFolder = "There is no folder for settings.";

// As the command of a desktop entry is quoted: once for the command line, once for the file.
std::string quotedCommand(std::string_view path) {
  std::string quoted = "\"";
  for (const char character : path) {
    if (character == '%') {
      quoted += "%%";
      continue;
    }
    if (character == '"' || character == '`' || character == '$' || character == '\\') quoted += "\\\\";
    if (character == '\\') quoted += '\\';
    quoted += character;
  }
  return quoted + '"';
}

// The program takes no options; a variable tells it that nobody is waiting for its window.
std::string commandLine(const std::string& program) {
  return "Exec=env KESTRUNE_START=quiet " + quotedCommand(program);
}

std::string entryFor(const std::string& program) {
  return "[Desktop Entry]\nType=Application\nName=Kestrune\nIcon=org.kestrune.Kestrune\n" +
         commandLine(program) + "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
}

bool hasLine(std::string_view text, std::string_view line) {
  for (std::size_t start = 0; start <= text.size();) {
    const auto end = std::min(text.find('\n', start), text.size());
    if (text.substr(start, end - start) == line) return true;
    start = end + 1;
  }
  return false;
}

bool isOff(std::string_view entry) {
  return hasLine(entry, "Hidden=true") || hasLine(entry, "X-GNOME-Autostart-enabled=false");
}

}  // namespace

LinuxLoginItem::LinuxLoginItem(const std::string& configDirectory, std::string program)
    : path_(configDirectory.empty() ? std::string() : below(configDirectory, "autostart/kestrune.desktop")),
      program_(std::move(program)) {}

bool LinuxLoginItem::isEnabled() {
  const auto entry = path_.empty() ? std::nullopt : readFile(path_);
  if (!entry || isOff(*entry)) return false;
  if (!hasLine(*entry, commandLine(program_))) registerItem();
  return true;
}

std::optional<std::string> LinuxLoginItem::registerItem() {
  if (path_.empty()) return noFolder;
  const auto error = replaceFile(path_, entryFor(program_));
  return error ? std::optional(error.message()) : std::nullopt;
}

std::optional<std::string> LinuxLoginItem::unregisterItem() {
  if (path_.empty()) return noFolder;
  if (unlink(path_.c_str()) == 0 || errno == ENOENT) return std::nullopt;
  return std::generic_category().message(errno);
}

}  // namespace kestrune::linux_platform
