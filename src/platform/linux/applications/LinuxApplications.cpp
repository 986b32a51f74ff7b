#include "platform/linux/applications/LinuxApplications.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/linux/applications/AppIdentity.h"
#include "platform/linux/applications/DesktopEntry.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/files/Text.h"
#include "platform/linux/processes/ProcessFiles.h"
#include "platform/linux/processes/ProgramName.h"
#include "platform/linux/program/LinuxProcessEnvironment.h"

namespace kestrune::platform {
namespace {

constexpr std::size_t smallFileLimit = std::size_t{64} << 10U;

// Appends the absolute paths of a list separated by colons, without duplicates.
void appendPaths(std::vector<std::string>& paths, std::string_view list) {
  while (!list.empty()) {
    std::string path(takePart(list, ':'));
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    if (path.starts_with('/') && std::ranges::find(paths, path) == paths.end())
      paths.push_back(std::move(path));
  }
}

std::vector<std::string> dataDirectories(ProcessEnvironment& environment) {
  std::vector<std::string> directories;
  const std::string home = environment.variable("HOME").value_or("");
  appendPaths(directories, dataDirectory(environment));
  const std::string dirs = environment.variable("XDG_DATA_DIRS").value_or("");
  appendPaths(directories, dirs.empty() ? "/usr/local/share:/usr/share" : dirs);
  // Not every session has these in XDG_DATA_DIRS.
  if (!home.empty()) appendPaths(directories, home + "/.local/share/flatpak/exports/share");
  appendPaths(directories, "/var/lib/flatpak/exports/share:/var/lib/snapd/desktop");
  return directories;
}

std::vector<std::string> argumentsOf(const std::string& root, std::int32_t pid) {
  std::vector<std::string> arguments;
  const std::string text = readFile(processFile(root, pid, "cmdline"), smallFileLimit).value_or("");
  for (std::string_view rest = text; !rest.empty();) arguments.emplace_back(takePart(rest, '\0'));
  return arguments;
}

RunningApplication shown(const IndexedApplication& application) {
  return {.bundleIdentifier = application.id,
          .localizedName = application.name,
          .iconName = application.icon.empty() ? std::nullopt : std::optional(application.icon)};
}

RunningApplication withoutDesktopFile(std::string id) {
  return {.bundleIdentifier = std::move(id), .localizedName = {}, .iconName = {}};
}

}  // namespace

ApplicationPlaces applicationPlaces(ProcessEnvironment& environment) {
  ApplicationPlaces places;
  places.dataDirectories = dataDirectories(environment);
  appendPaths(places.programDirectories, environment.variable("PATH").value_or(""));
  appendPaths(places.programDirectories, "/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games");
  places.localeNames = userLanguages(environment);
  return places;
}

LinuxApplications::LinuxApplications()
    : LinuxApplications([] {
        LinuxProcessEnvironment environment;
        return applicationPlaces(environment);
      }()) {}

LinuxApplications::LinuxApplications(ApplicationPlaces places)
    : root_(places.root), index_(std::move(places)) {}

std::optional<RunningApplication> LinuxApplications::runningApplication(std::int32_t pid) {
  if (pid < 1) return std::nullopt;
  const auto cgroup = readFile(processFile(root_, pid, "cgroup"), smallFileLimit);
  if (!cgroup) return std::nullopt;
  index_.refresh();
  const auto unit = parseAppCgroup(*cgroup);
  const IndexedApplication* const launched = unit ? index_.byId(unit->id) : nullptr;
  if (launched != nullptr && !launched->isTerminal) return shown(*launched);
  if (unit && unit->kind == AppUnit::Kind::flatpak) return withoutDesktopFile(unit->id);

  const auto sandbox = readFile(processFile(root_, pid, "root/.flatpak-info"), smallFileLimit);
  if (std::string id = sandbox ? parseFlatpakId(*sandbox) : std::string(); !id.empty()) {
    const IndexedApplication* const application = index_.byId(id);
    return application != nullptr ? shown(*application) : withoutDesktopFile(std::move(id));
  }

  if (const IndexedApplication* const application = byProgram(pid)) return shown(*application);
  const bool isCertain = unit && unit->kind == AppUnit::Kind::launched && launched == nullptr;
  return isCertain ? std::optional(withoutDesktopFile(unit->id)) : std::nullopt;
}

const IndexedApplication* LinuxApplications::byProgram(std::int32_t pid) const {
  const std::string executable = executableOf(root_, pid);
  if (executable.empty()) return nullptr;
  if (!isInterpreter(baseName(executable))) return index_.byProgram(executable, false);
  std::vector<std::string> arguments = argumentsOf(root_, pid);
  if (arguments.empty()) return nullptr;
  // A process may set argv[0] to anything; the executable is reliable.
  arguments.front() = executable;
  const std::string script(programIn(arguments));
  return script.starts_with('/') ? index_.byProgram(script, true) : nullptr;
}

std::optional<std::string> LinuxApplications::applicationPath(const std::string& bundleIdentifier) {
  index_.refresh();
  const IndexedApplication* const application = index_.byId(bundleIdentifier);
  return application == nullptr ? std::nullopt : std::optional(application->desktopFile);
}

std::string LinuxApplications::processName(std::int32_t pid) {
  if (pid < 1) return {};
  std::string name = readFile(processFile(root_, pid, "comm"), smallFileLimit).value_or("");
  if (name.ends_with('\n')) name.pop_back();
  return name;
}

}  // namespace kestrune::platform
