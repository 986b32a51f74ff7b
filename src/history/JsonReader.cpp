#include "history/JsonReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

#include <nlohmann/json.hpp>

namespace kestrune {
namespace {

constexpr int maxDepth = 128;
// 2^63 and 2^64: the first values beyond the range of the integers.
constexpr double beyondSigned = 9223372036854775808.0;
constexpr double beyondUnsigned = 18446744073709551616.0;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// The number of digits from `begin` on.
std::size_t digitsAt(std::string_view text, std::size_t begin) {
  std::size_t end = begin;
  while (end < text.size() && isDigit(text[end])) ++end;
  return end - begin;
}

bool isAnyOf(std::string_view text, std::size_t i, std::string_view characters) {
  return i < text.size() && characters.find(text[i]) != std::string_view::npos;
}

template <class Value>
bool convert(std::string_view digits, Value& value) {
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return result.ec == std::errc() && result.ptr == digits.data() + digits.size();
}

// A string with escapes, or with bytes beyond ASCII that must be valid UTF-8.
bool readUnusual(std::string_view quoted, std::string& value) {
  auto json = nlohmann::json::parse(quoted, nullptr, /*allow_exceptions=*/false);
  if (!json.is_string()) return false;
  value = std::move(json.get_ref<std::string&>());
  return true;
}

}  // namespace

bool JsonReader::read(double& value) {
  const Number number = takeNumber();
  return !number.text.empty() && convert(number.text, value);
}

bool JsonReader::read(std::int64_t& value) {
  return readInteger(value, -beyondSigned, beyondSigned);
}

bool JsonReader::read(std::uint64_t& value) {
  return readInteger(value, 0, beyondUnsigned);
}

template <class Integer>
bool JsonReader::readInteger(Integer& value, double min, double beyond) {
  const Number number = takeNumber();
  if (number.text.empty()) return false;
  if (!number.hasFractionOrExponent) return convert(number.text, value);
  double real = 0;
  if (!convert(number.text, real) || std::trunc(real) != real || real < min || real >= beyond) return false;
  value = static_cast<Integer>(real);
  return true;
}

bool JsonReader::read(std::string& value) {
  skipBlanks();
  const std::string_view begin = rest_;
  if (!take('"')) return false;
  bool isUnusual = false;
  std::size_t end = 1;
  for (; end < begin.size() && begin[end] != '"'; ++end) {
    const auto byte = static_cast<unsigned char>(begin[end]);
    isUnusual |= byte < 0x20 || byte >= 0x80 || byte == '\\';
    if (byte == '\\') ++end;
  }
  if (end >= begin.size()) return false;
  rest_ = begin.substr(end + 1);
  if (isUnusual) return readUnusual(begin.substr(0, end + 1), value);
  value = begin.substr(1, end - 1);
  return true;
}

// A number in JSON has no plus sign, no leading zeros, and digits on both sides of the point.
JsonReader::Number JsonReader::takeNumber() {
  skipBlanks();
  std::size_t end = isAnyOf(rest_, 0, "-") ? 1 : 0;
  const std::size_t whole = digitsAt(rest_, end);
  if (whole == 0 || (whole > 1 && rest_[end] == '0')) return {};
  end += whole;
  bool hasFractionOrExponent = false;
  if (isAnyOf(rest_, end, ".")) {
    const std::size_t fraction = digitsAt(rest_, end + 1);
    if (fraction == 0) return {};
    end += 1 + fraction;
    hasFractionOrExponent = true;
  }
  if (isAnyOf(rest_, end, "eE")) {
    const std::size_t first = end + (isAnyOf(rest_, end + 1, "+-") ? 2 : 1);
    const std::size_t exponent = digitsAt(rest_, first);
    if (exponent == 0) return {};
    end = first + exponent;
    hasFractionOrExponent = true;
  }
  const Number number{rest_.substr(0, end), hasFractionOrExponent};
  rest_.remove_prefix(end);
  return number;
}

bool JsonReader::skipBelow(int depth) {
  if (depth > maxDepth) return false;
  skipBlanks();
  if (rest_.empty()) return false;
  switch (rest_.front()) {
    case '{':
      return readObject([&](const std::string&) { return skipBelow(depth + 1); });
    case '[':
      return readArray([&] { return skipBelow(depth + 1); });
    case '"': {
      std::string ignored;
      return read(ignored);
    }
    case 't':
      return takeWord("true");
    case 'f':
      return takeWord("false");
    case 'n':
      return takeWord("null");
    default:
      return !takeNumber().text.empty();
  }
}

bool JsonReader::isAtEnd() {
  skipBlanks();
  return rest_.empty();
}

void JsonReader::skipBlanks() {
  if (!rest_.empty() && rest_.front() > ' ') return;  // the usual case
  rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
}

bool JsonReader::take(char c) {
  skipBlanks();
  if (rest_.empty() || rest_.front() != c) return false;
  rest_.remove_prefix(1);
  return true;
}

bool JsonReader::takeWord(std::string_view word) {
  if (!rest_.starts_with(word)) return false;
  rest_.remove_prefix(word.size());
  return true;
}

}  // namespace kestrune
