#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace kestrune {

// Numbers as the user's locale writes them. Formatters are kept, since making one costs far more than using
// it. Main thread only.
class LocaleFormats {
 public:
  // `localeName` as the environment gives it ("es_ES.UTF-8"); an unknown or empty one reads as "en_US".
  explicit LocaleFormats(const std::string& localeName);
  ~LocaleFormats();
  LocaleFormats(const LocaleFormats&) = delete;
  LocaleFormats& operator=(const LocaleFormats&) = delete;

  // "33%", "33,4 %": a fraction as percentage with a fixed number of fraction digits, rounded half to even.
  std::string percent(double fraction, int fractionDigits);
  // "May 9, 2026": a day that is given as "2026-05-09". What is no such day is shown as it is.
  std::string day(const std::string& isoDay);
  // "May 9", "9 may": the same without the year.
  std::string shortDay(const std::string& isoDay);
  enum class Detail : std::uint8_t { minutes, seconds };
  // "2:05:32 PM", "14:05:32", "14:05": a time of day, given in seconds after 0:00.
  std::string time(int secondOfDay, Detail detail = Detail::seconds);

 private:
  struct Formatters;
  std::unique_ptr<Formatters> formatters_;
};

}  // namespace kestrune
