#include "platform/linux/user/LinuxLoginItem.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

constexpr const char* noFolder = "There is no folder for settings.";

// Quoted as desktop entries require: once for the command line, once for the file.
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

// The program takes no options; the variable tells it not to open its window.
std::string execLine(const std::string& program) {
  return "Exec=env KESTRUNE_START=quiet " + quotedCommand(program);
}

std::string entryFor(const std::string& program) {
  return "[Desktop Entry]\nType=Application\nName=Kestrune\nIcon=org.kestrune.Kestrune\n" +
         execLine(program) + "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
}

bool isExecLine(std::string_view line) {
  return trimmed(line.substr(0, line.find('='))) == "Exec";
}

// Replaces the first Exec line, which is the one of the group [Desktop Entry].
std::string withExecLine(std::string_view entry, std::string_view execLine) {
  for (std::string_view rest = entry; !rest.empty();) {
    const std::size_t start = entry.size() - rest.size();
    const std::string_view line = takeLine(rest);
    if (isExecLine(line)) return std::string(entry).replace(start, line.size(), execLine);
  }
  return std::string(entry);
}

}  // namespace

LinuxLoginItem::LinuxLoginItem(const std::string& configDirectory, std::string program)
    : path_(configDirectory.empty() ? std::string() : below(configDirectory, "autostart/kestrune.desktop")),
      program_(std::move(program)) {}

bool LinuxLoginItem::isEnabled() {
  const auto text = path_.empty() ? std::nullopt : readFile(path_);
  const auto entry = text ? parseDesktopEntry(*text, {}) : std::nullopt;
  if (!entry || entry->isHidden || !entry->startsWithSession) return false;
  const auto command = execArguments(entry->exec);
  if (std::ranges::find(command, program_) == command.end()) updateCommand(*text);
  return true;
}

std::optional<std::string> LinuxLoginItem::registerItem() {
  if (path_.empty()) return noFolder;
  if (!canBeStarted()) return "An entry can't name the program's file: " + program_;
  const auto error = replaceFile(linkTarget(path_), entryFor(program_));
  return error ? std::optional(error.message()) : std::nullopt;
}

// A path with a control character doesn't fit into a line, and `env` takes a word with an equals sign for a
// variable.
bool LinuxLoginItem::canBeStarted() const {
  const bool canBeNamed = std::ranges::none_of(
      program_, [](char character) { return character == '=' || (character >= 0 && character < ' '); });
  return canBeNamed && access(program_.c_str(), X_OK) == 0;
}

// A failure is ignored: the next call of `isEnabled` tries again.
void LinuxLoginItem::updateCommand(const std::string& entry) {
  if (canBeStarted()) replaceFile(linkTarget(path_), withExecLine(entry, execLine(program_)));
}

std::optional<std::string> LinuxLoginItem::unregisterItem() {
  if (path_.empty()) return noFolder;
  if (unlink(path_.c_str()) == 0 || errno == ENOENT) return std::nullopt;
  return std::generic_category().message(errno);
}

}  // namespace kestrune::platform
