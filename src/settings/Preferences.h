#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/PreferenceStorage.h"
#include "runtime/Published.h"
#include "settings/Settings.h"

namespace kestrune {

// The user's preferences: a flat store of values by key. A key exists once it has been written; until then
// the default of its setting applies. Main thread only.
class Preferences {
 public:
  // Reads the storage once. The storage must outlive the preferences.
  explicit Preferences(platform::PreferenceStorage& storage);

  // The stored value; absent if there is none or it has another type. An integer also counts as a double.
  template <class T>
  std::optional<T> value(const std::string& key) const;

  // Stores the value at once and notifies the readers of the key.
  void set(const std::string& key, platform::PreferenceValue value);

 private:
  using Slot = Published<std::optional<platform::PreferenceValue>>;
  Slot& slot(const std::string& key) const;

  platform::PreferenceStorage& storage_;
  // A slot for each key that was stored or asked for. Readers are recorded in the slot, so its address is
  // stable.
  mutable std::map<std::string, std::unique_ptr<Slot>> slots_;
};

template <class T>
std::optional<T> Preferences::value(const std::string& key) const {
  const auto& stored = slot(key).get();
  if (!stored) return std::nullopt;
  if constexpr (std::is_same_v<T, double>) {
    if (const auto* integer = std::get_if<std::int64_t>(&*stored)) return static_cast<double>(*integer);
  }
  const T* typed = std::get_if<T>(&*stored);
  return typed != nullptr ? std::optional<T>(*typed) : std::nullopt;
}

// A setting bound to the preferences that hold it.
template <class T>
class Preference {
 public:
  Preference(Preferences& preferences, const Setting<T>& setting)
      : preferences_(&preferences), key_(setting.key), fallback_(setting.fallback) {}

  // The stored value, or the setting's own if none of its type is stored.
  T get() const { return preferences_->value<T>(key_).value_or(fallback_); }
  void set(T value) const { preferences_->set(key_, std::move(value)); }

 private:
  Preferences* preferences_;
  std::string key_;
  T fallback_;
};

// Writes the default of each setting in `settings::reset`, in that order; no key is removed. The sandbox
// hints, the language, the login item and the recorded history are left alone.
void resetAllSettings(Preferences& preferences);

}  // namespace kestrune
