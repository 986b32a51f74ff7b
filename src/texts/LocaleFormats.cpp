#include "texts/LocaleFormats.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <optional>
#include <string_view>

#include <unicode/dcfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

namespace kestrune {
namespace {

constexpr std::size_t maxFractionDigits = 6;

icu::Locale localeNamed(const std::string& name) {
  // Without encoding and variant: "es_ES.UTF-8", "ca_ES@valencia".
  const icu::Locale locale(name.substr(0, name.find_first_of(".@")).c_str());
  // ICU returns a three-letter code only for languages that exist.
  const bool isKnown = !locale.isBogus() && !std::string_view(locale.getISO3Language()).empty();
  return isKnown ? locale : icu::Locale::getUS();
}

std::optional<int> number(std::string_view digits) {
  int value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() && end == digits.data() + digits.size() ? std::optional(value) : std::nullopt;
}

// Midnight UTC of the day, in milliseconds since 1970.
std::optional<UDate> midnightOf(std::string_view isoDay) {
  constexpr std::size_t length = 10;
  if (isoDay.size() != length || isoDay[4] != '-' || isoDay[7] != '-') return std::nullopt;
  const auto year = number(isoDay.substr(0, 4));
  const auto month = number(isoDay.substr(5, 2));
  const auto day = number(isoDay.substr(8, 2));
  if (!year || !month || !day) return std::nullopt;
  const std::chrono::year_month_day date{std::chrono::year(*year),
                                         std::chrono::month(static_cast<unsigned>(*month)),
                                         std::chrono::day(static_cast<unsigned>(*day))};
  if (!date.ok()) return std::nullopt;
  return static_cast<UDate>(
      std::chrono::milliseconds(std::chrono::sys_days(date).time_since_epoch()).count());
}

}  // namespace

struct LocaleFormats::Formatters {
  icu::Locale locale;
  std::array<std::optional<icu::number::LocalizedNumberFormatter>, maxFractionDigits + 1> percentByDigits;
  std::unique_ptr<icu::SimpleDateFormat> day;
  std::unique_ptr<icu::SimpleDateFormat> shortDay;
  icu::UnicodeString shortDayPattern;
  std::array<std::unique_ptr<icu::DateFormat>, 2> timeByDetail;

  // The day in the given pattern. The formatter is created on first use.
  std::string written(std::unique_ptr<icu::SimpleDateFormat>& format, const icu::UnicodeString& pattern,
                      const std::string& isoDay) const {
    const auto midnight = midnightOf(isoDay);
    if (!midnight) return isoDay;
    UErrorCode status = U_ZERO_ERROR;
    if (!format) {
      format = std::make_unique<icu::SimpleDateFormat>(pattern, locale, status);
      format->setTimeZone(*icu::TimeZone::getGMT());
    }
    icu::UnicodeString formatted;
    format->format(*midnight, formatted);
    std::string utf8;
    return U_SUCCESS(status) ? formatted.toUTF8String(utf8) : isoDay;
  }
};

LocaleFormats::LocaleFormats(const std::string& localeName)
    : formatters_(new Formatters{.locale = localeNamed(localeName)}) {}

LocaleFormats::~LocaleFormats() = default;

std::string LocaleFormats::decimalMark() const {
  UErrorCode status = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols symbols(formatters_->locale, status);
  std::string utf8;
  if (U_FAILURE(status)) return ".";
  return symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol).toUTF8String(utf8);
}

std::string LocaleFormats::day(const std::string& isoDay) {
  return formatters_->written(formatters_->day, "MMM d, yyyy", isoDay);
}

std::string LocaleFormats::shortDay(const std::string& isoDay) {
  if (!formatters_->shortDay) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::DateTimePatternGenerator> patterns(
        icu::DateTimePatternGenerator::createInstance(formatters_->locale, status));
    if (U_FAILURE(status)) return isoDay;
    formatters_->shortDayPattern = patterns->getBestPattern("MMMd", status);
  }
  return formatters_->written(formatters_->shortDay, formatters_->shortDayPattern, isoDay);
}

std::string LocaleFormats::time(int secondOfDay, Detail detail) {
  constexpr UDate millisecondsPerSecond = 1000;
  auto& formatter = formatters_->timeByDetail.at(static_cast<std::size_t>(detail));
  if (!formatter) {
    const auto style = detail == Detail::minutes ? icu::DateFormat::kShort : icu::DateFormat::kMedium;
    formatter.reset(icu::DateFormat::createTimeInstance(style, formatters_->locale));
    formatter->setTimeZone(*icu::TimeZone::getGMT());
  }
  icu::UnicodeString formatted;
  formatter->format(secondOfDay * millisecondsPerSecond, formatted);
  std::string utf8;
  return formatted.toUTF8String(utf8);
}

std::string LocaleFormats::percent(double fraction, int fractionDigits) {
  const int digits = std::clamp(fractionDigits, 0, static_cast<int>(maxFractionDigits));
  auto& formatter = formatters_->percentByDigits.at(static_cast<std::size_t>(digits));
  if (!formatter) {
    formatter = icu::number::NumberFormatter::withLocale(formatters_->locale)
                    .unit(icu::NoUnit::percent())
                    .scale(icu::number::Scale::powerOfTen(2))
                    .precision(icu::number::Precision::fixedFraction(digits))
                    .roundingMode(UNUM_ROUND_HALFEVEN);
  }
  UErrorCode status = U_ZERO_ERROR;
  const icu::UnicodeString formatted = formatter->formatDouble(fraction, status).toTempString(status);
  std::string utf8;
  return formatted.toUTF8String(utf8);
}

}  // namespace kestrune
