#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/PreferenceStorage.h"
#include "runtime/Published.h"

namespace kestrune {

// The user's preferences: a flat store of values by key. No key exists before something has written it; each
// reader states the default. Main thread only.
class Preferences {
 public:
  // Reads the storage once. The storage must outlive the preferences.
  explicit Preferences(platform::PreferenceStorage& storage);

  // The stored value if it is there and of that type. A number is a Double wherever one is asked for.
  template <class T>
  std::optional<T> value(const std::string& key) const;

  // Stores the value at once and notifies the readers of that key.
  void set(const std::string& key, platform::PreferenceValue value);

 private:
  using Slot = Published<std::optional<platform::PreferenceValue>>;
  Slot& slot(const std::string& key) const;

  platform::PreferenceStorage& storage_;
  // A slot for each key that was stored or asked for. Its address stays, since readers are noted in it.
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

// One preference bound to its key and default, as a view declares it.
template <class T>
class Preference {
 public:
  Preference(Preferences& preferences, std::string key, T fallback)
      : preferences_(&preferences), key_(std::move(key)), fallback_(std::move(fallback)) {}

  T get() const { return preferences_->value<T>(key_).value_or(fallback_); }
  void set(T value) const { preferences_->set(key_, std::move(value)); }

 private:
  Preferences* preferences_;
  std::string key_;
  T fallback_;
};

}  // namespace kestrune
