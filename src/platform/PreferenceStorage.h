#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace kestrune::platform {

using PreferenceValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;
using PreferenceMap = std::map<std::string, PreferenceValue>;

// Where preferences outlive the process. Main thread.
class PreferenceStorage {
 public:
  virtual ~PreferenceStorage() = default;
  // What is stored; nothing where nothing is, or where it can't be read.
  virtual PreferenceMap load() = 0;
  // Stores one value at once. What else is stored stays, also what `load` didn't know how to read. A failure
  // is silent: the value then holds for this run only.
  virtual void store(const std::string& key, const PreferenceValue& value) = 0;
};

}  // namespace kestrune::platform
