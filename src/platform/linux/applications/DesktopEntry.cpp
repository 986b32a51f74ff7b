#include "platform/linux/applications/DesktopEntry.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "platform/linux/files/Text.h"

namespace kestrune::platform {
namespace {

// The character for the letter of an escape sequence; 0: not an escape sequence.
char escaped(char letter) {
  switch (letter) {
    case 's':
      return ' ';
    case 'n':
      return '\n';
    case 't':
      return '\t';
    case 'r':
      return '\r';
    case '\\':
      return '\\';
    default:
      return 0;
  }
}

std::string unescapedValue(std::string_view value) {
  std::string result;
  result.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char meant = value[i] == '\\' && i + 1 < value.size() ? escaped(value[i + 1]) : '\0';
    result += meant == '\0' ? value[i] : meant;
    if (meant != '\0') ++i;
  }
  return result;
}

bool hasItem(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    if (trimmed(takePart(list, ';')) == item) return true;
  }
  return false;
}

// Collects the lines of the group. If a key is repeated, the last one counts.
class Reader {
 public:
  explicit Reader(const std::vector<std::string>& localeNames)
      : localeNames_(localeNames), nameRank_(localeNames.size()) {}

  void take(std::string_view key, std::string_view value) {
    if (key == "Type") {
      isApplication_ = value == "Application";
    } else if (key.starts_with("Name")) {
      takeName(key.substr(4), value);
    } else if (key == "Icon") {
      entry_.icon = unescapedValue(value);
    } else if (key == "Exec") {
      entry_.exec = unescapedValue(value);
    } else if (key == "TryExec") {
      entry_.tryExec = unescapedValue(value);
    } else if (key == "Hidden") {
      entry_.isHidden = value == "true";
    } else if (key == "NoDisplay") {
      entry_.isNoDisplay = value == "true";
    } else if (key == "X-GNOME-Autostart-enabled") {
      entry_.startsWithSession = value != "false";
    } else if (key == "Categories") {
      entry_.isTerminal = hasItem(value, "TerminalEmulator");
    }
  }

  std::optional<DesktopEntry> entry() {
    // A hidden entry often consists of nothing but that line.
    if (!isApplication_ && !entry_.isHidden) return std::nullopt;
    return std::move(entry_);
  }

 private:
  // `language` is empty or in brackets.
  void takeName(std::string_view language, std::string_view value) {
    std::size_t rank = localeNames_.size();
    if (!language.empty()) {
      if (!language.starts_with('[') || !language.ends_with(']')) return;
      const auto found = std::ranges::find(localeNames_, language.substr(1, language.size() - 2));
      if (found == localeNames_.end()) return;
      rank = static_cast<std::size_t>(found - localeNames_.begin());
    }
    if (rank > nameRank_) return;
    nameRank_ = rank;
    entry_.name = unescapedValue(value);
  }

  const std::vector<std::string>& localeNames_;
  std::size_t nameRank_;
  bool isApplication_ = false;
  DesktopEntry entry_;
};

// Splits a command at blanks outside quotes.
class ExecScanner {
 public:
  explicit ExecScanner(std::string_view exec) : rest_(exec) {}

  // The next argument. Absent: there are no more.
  std::optional<std::string> argument() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n"), rest_.size()));
    if (rest_.empty()) return std::nullopt;
    std::string result;
    while (!rest_.empty() && !isMalformed_) {
      const char next = take();
      if (next == ' ' || next == '\t' || next == '\n') break;
      if (next == '"') {
        takeQuoted(result);
      } else {
        result += next == '\\' && !rest_.empty() ? take() : next;
      }
    }
    return result;
  }
  bool isMalformed() const { return isMalformed_; }

 private:
  char take() {
    const char first = rest_.front();
    rest_.remove_prefix(1);
    return first;
  }
  void takeQuoted(std::string& result) {
    while (!rest_.empty()) {
      const char next = take();
      if (next == '"') return;
      result += next == '\\' && !rest_.empty() ? take() : next;
    }
    isMalformed_ = true;
  }

  std::string_view rest_;
  bool isMalformed_ = false;
};

bool isPlaceholder(std::string_view argument) {
  return argument.size() == 2 && argument[0] == '%' && argument[1] != '%';
}

std::string withSinglePercents(std::string_view argument) {
  std::string result;
  for (std::size_t i = 0; i < argument.size(); ++i) {
    result += argument[i];
    if (argument.substr(i).starts_with("%%")) ++i;
  }
  return result;
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(std::string_view text,
                                              const std::vector<std::string>& localeNames) {
  Reader reader(localeNames);
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = trimmed(takeLine(text));
    if (line.starts_with('[')) {
      if (isInGroup) break;
      isInGroup = line == "[Desktop Entry]";
      continue;
    }
    const auto equals = line.find('=');
    if (!isInGroup || line.starts_with('#') || equals == std::string_view::npos) continue;
    reader.take(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
  }
  return reader.entry();
}

std::vector<std::string> execArguments(std::string_view exec) {
  std::vector<std::string> arguments;
  ExecScanner scanner(exec);
  while (const auto argument = scanner.argument()) {
    if (scanner.isMalformed()) return {};
    if (!isPlaceholder(*argument)) arguments.push_back(withSinglePercents(*argument));
  }
  return arguments;
}

std::vector<std::string> localeNames(std::string_view locale) {
  const auto at = std::min(locale.find('@'), locale.size());
  const std::string_view modifier = locale.substr(at);
  locale = locale.substr(0, std::min(locale.find('.'), at));
  if (locale.empty() || locale == "C" || locale == "POSIX") return {};
  std::vector<std::string> names;
  for (const std::string_view base : {locale, locale.substr(0, locale.find('_'))}) {
    for (const std::string_view end : {modifier, std::string_view()}) {
      std::string name = std::string(base).append(end);
      if (std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
    }
  }
  return names;
}

std::vector<std::string> userLanguages(ProcessEnvironment& environment) {
  std::string locale;
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    locale = environment.variable(name).value_or("");
    if (!locale.empty()) break;
  }
  std::vector<std::string> names = localeNames(locale);
  if (names.empty()) return names;
  // LANGUAGE lists languages that come before that of the locale.
  std::vector<std::string> all;
  const std::string languages = environment.variable("LANGUAGE").value_or("");
  for (std::string_view rest = languages; !rest.empty();) {
    std::ranges::copy(localeNames(takePart(rest, ':')), std::back_inserter(all));
  }
  std::ranges::copy(names, std::back_inserter(all));
  return all;
}

}  // namespace kestrune::platform
