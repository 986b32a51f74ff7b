#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace kestrune::platform {

using PreferenceValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;
using PreferenceMap = std::map<std::string, PreferenceValue>;

// Preferences that outlive the process. Main thread.
class PreferenceStorage {
 public:
  virtual ~PreferenceStorage() = default;
  // All stored values; empty if there are none or they can't be read.
  virtual PreferenceMap load() = 0;
  // Stores one value immediately. Other values stay, even those that `load` couldn't read. A failure is
  // silent: the value then lasts for this run only.
  virtual void store(const std::string& key, const PreferenceValue& value) = 0;
};

}  // namespace kestrune::platform
