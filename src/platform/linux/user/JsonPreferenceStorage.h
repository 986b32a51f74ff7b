#pragma once

#include <optional>
#include <string>

#include "platform/PreferenceStorage.h"

namespace kestrune::platform {

// Preferences in one JSON file for the user's eyes only. Each change replaces the file in one step, so that a
// crash leaves the old one or the new one. A link to the file stays a link. A file that is no preferences
// file is renamed to
// `<name>.damaged` (or the next free name like it), which is told once on standard error; one that may not be
// read is left alone, and values hold for this run only.
class JsonPreferenceStorage final : public PreferenceStorage {
 public:
  // An empty path: nothing is stored.
  explicit JsonPreferenceStorage(std::string path);

  PreferenceMap load() override;
  // Reads the file anew, so that what another running instance has stored meanwhile stays.
  void store(const std::string& key, const PreferenceValue& value) override;

 private:
  std::optional<std::string> readDocument();
  bool setAside(const std::string& file);

  std::string path_;
  bool hasReportedDamage_ = false;
};

}  // namespace kestrune::platform
