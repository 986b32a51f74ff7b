#include "texts/TextFormat.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include <fmt/format.h>

namespace kestrune {
namespace {

constexpr std::size_t maxFractionDigits = 9;

// One placeholder of a format.
struct Specifier {
  std::size_t position = 0;  // of the argument, from 1; 0: the next one
  std::size_t fractionDigits = 0;
  char conversion = 0;
  std::size_t length = 0;  // in the format
};

// Removes the leading number from the text and returns it.
std::optional<std::size_t> takeNumber(std::string_view& text) {
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

bool take(std::string_view& text, char c) {
  if (!text.starts_with(c)) return false;
  text.remove_prefix(1);
  return true;
}

// Parses the placeholder at the start of the text.
std::optional<Specifier> readSpecifier(std::string_view text) {
  Specifier specifier;
  std::string_view rest = text.substr(1);
  if (const auto position = takeNumber(rest)) {
    if (*position == 0 || !take(rest, '$')) return std::nullopt;
    specifier.position = *position;
  }
  if (take(rest, '.')) {
    const auto digits = takeNumber(rest);
    if (!digits || *digits > maxFractionDigits) return std::nullopt;
    specifier.fractionDigits = *digits;
  }
  if (rest.empty() || std::string_view("@df%").find(rest.front()) == std::string_view::npos) {
    return std::nullopt;
  }
  specifier.conversion = rest.front();
  specifier.length = text.size() - rest.size() + 1;
  return specifier;
}

struct ArgumentWriter {
  std::string& text;
  std::size_t fractionDigits;
  std::string_view decimalMark;

  void operator()(const std::string& argument) const { text += argument; }
  void operator()(std::int64_t argument) const { text += std::to_string(argument); }
  void operator()(double argument) const {
    const std::string number = fmt::format("{:.{}f}", argument, fractionDigits);
    const std::size_t point = std::min(number.find('.'), number.size());
    text.append(number, 0, point);
    if (point == number.size()) return;
    text.append(decimalMark).append(number, point + 1);
  }
};

}  // namespace

std::string formatText(std::string_view format, const std::vector<TextArgument>& arguments,
                       std::string_view decimalMark) {
  std::string text;
  std::size_t next = 1;
  for (;;) {
    const auto plain = std::min(format.find('%'), format.size());
    text += format.substr(0, plain);
    format.remove_prefix(plain);
    if (format.empty()) return text;

    const auto specifier = readSpecifier(format);
    const std::size_t length = specifier ? specifier->length : 1;
    std::size_t position = 0;
    if (specifier && specifier->conversion != '%') {
      position = specifier->position != 0 ? specifier->position : next++;
    }
    if (position >= 1 && position <= arguments.size()) {
      std::visit(ArgumentWriter{text, specifier->fractionDigits, decimalMark}, arguments[position - 1]);
    } else {
      text += specifier && specifier->conversion == '%' ? "%" : format.substr(0, length);
    }
    format.remove_prefix(length);
  }
}

}  // namespace kestrune
