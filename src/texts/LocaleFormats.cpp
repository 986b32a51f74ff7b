#include "texts/LocaleFormats.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include <unicode/locid.h>
#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

namespace kestrune {
namespace {

constexpr std::size_t mostFractionDigits = 6;

icu::Locale localeNamed(const std::string& name) {
  // Without encoding and variant: "es_ES.UTF-8", "ca_ES@valencia".
  const icu::Locale locale(name.substr(0, name.find_first_of(".@")).c_str());
  // A language that exists has a code of three letters.
  const bool isKnown = !locale.isBogus() && !std::string_view(locale.getISO3Language()).empty();
  return isKnown ? locale : icu::Locale::getUS();
}

}  // namespace

struct LocaleFormats::Formatters {
  icu::Locale locale;
  std::array<std::optional<icu::number::LocalizedNumberFormatter>, mostFractionDigits + 1> percentByDigits;
};

LocaleFormats::LocaleFormats(const std::string& localeName)
    : formatters_(new Formatters{localeNamed(localeName), {}}) {}

LocaleFormats::~LocaleFormats() = default;

std::string LocaleFormats::percent(double fraction, int fractionDigits) {
  const int digits = std::clamp(fractionDigits, 0, static_cast<int>(mostFractionDigits));
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
