#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace kestrune {

// Numbers in the user's locale. Formatters are cached, because creating one costs far more than using it.
// Main thread only.
class LocaleFormats {
 public:
  // `localeName` as the environment gives it ("es_ES.UTF-8"); an unknown or empty one reads as "en_US".
  explicit LocaleFormats(const std::string& localeName);
  ~LocaleFormats();
  LocaleFormats(const LocaleFormats&) = delete;
  LocaleFormats& operator=(const LocaleFormats&) = delete;

  // A fraction as a percentage with a fixed number of decimals, rounded half to even: "33%", "33,4 %".
  std::string percent(double fraction, int fractionDigits);
  // What stands between units and tenths: "." or ",". UTF-8.
  std::string decimalMark() const;
  // The day "2026-05-09" as "May 9, 2026". Text that isn't a day is returned unchanged.
  std::string day(const std::string& isoDay);
  // The same without the year: "May 9", "9 may".
  std::string shortDay(const std::string& isoDay);
  enum class Detail : std::uint8_t { minutes, seconds };
  // A time of day, given in seconds after 0:00: "2:05:32 PM", "14:05:32", "14:05".
  std::string time(int secondOfDay, Detail detail = Detail::seconds);

 private:
  struct Formatters;
  std::unique_ptr<Formatters> formatters_;
};

}  // namespace kestrune
