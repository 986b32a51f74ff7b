#include "platform/linux/user/JsonPreferenceStorage.h"

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

#include <sys/stat.h>

#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/Files.h"
#include "platform/linux/user/PreferenceDocument.h"

namespace kestrune::platform {
namespace {

constexpr std::string_view emptyDocument = "{}";

bool isMissing(const std::string& file) {
  struct stat status {};
  return stat(file.c_str(), &status) != 0 && errno == ENOENT;
}

}  // namespace

JsonPreferenceStorage::JsonPreferenceStorage(std::string path) : path_(std::move(path)) {}

PreferenceMap JsonPreferenceStorage::load() {
  const auto document = readDocument();
  const auto preferences = document ? parsePreferences(*document) : std::nullopt;
  return preferences.value_or(PreferenceMap());
}

void JsonPreferenceStorage::store(const std::string& key, const PreferenceValue& value) {
  const auto document = readDocument();
  if (!document) return;
  const auto changed = withPreference(*document, key, value);
  if (changed && *changed != *document) replaceFile(linkTarget(path_), *changed);
}

// A valid document, empty if there is no file. Absent: there is a file that must not be replaced.
std::optional<std::string> JsonPreferenceStorage::readDocument() {
  if (path_.empty()) return std::nullopt;
  const std::string file = linkTarget(path_);
  if (isMissing(file)) return std::string(emptyDocument);
  auto text = readFile(file);
  if (!text) return std::nullopt;
  if (parsePreferences(*text)) return text;
  return setAside(file) ? std::optional<std::string>(emptyDocument) : std::nullopt;
}

bool JsonPreferenceStorage::setAside(const std::string& file) {
  const auto name = renameToFreeName(file, file + ".damaged");
  if (!std::exchange(hasReportedDamage_, true)) {
    const std::string outcome =
        name ? "set aside as " + *name : "left in place, so that changes aren't stored";
    std::fprintf(stderr, "kestrune: the preferences in %s are damaged; %s\n", file.c_str(), outcome.c_str());
  }
  return name.has_value();
}

}  // namespace kestrune::platform
