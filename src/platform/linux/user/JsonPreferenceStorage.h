#pragma once

#include <optional>
#include <string>

#include "platform/PreferenceStorage.h"

namespace kestrune::platform {

// Preferences in one JSON file that only the user can read. Each change replaces the file atomically, so that
// a crash leaves the old version or the new one. A symbolic link to the file stays a link. A file that isn't
// valid is renamed to `<name>.damaged` (or the next free name) and reported once on standard error. If the
// file can't be read it is left alone and changes last for this run only.
class JsonPreferenceStorage final : public PreferenceStorage {
 public:
  // If `path` is empty, nothing is stored.
  explicit JsonPreferenceStorage(std::string path);

  PreferenceMap load() override;
  // Rereads the file first, so that values stored by another running instance are kept.
  void store(const std::string& key, const PreferenceValue& value) override;

 private:
  std::optional<std::string> readDocument();
  bool setAside(const std::string& file);

  std::string path_;
  bool hasReportedDamage_ = false;
};

}  // namespace kestrune::platform
