#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kestrune {

// Reads JSON from front to back, straight into the variables of whoever knows what has to come: no tree is
// built, which makes it several times as fast. Each operation takes one whole value. False: there is no such
// value, and nothing more can be read. The text must outlive the reader.
class JsonReader {
 public:
  explicit JsonReader(std::string_view text) : rest_(text) {}

  // Fails where the number is too large, or so small that only 0 would be left of it.
  bool read(double& value);
  // Only whole numbers that fit. 5.0 and 5e0 are whole.
  bool read(std::int64_t& value);
  bool read(std::uint64_t& value);
  bool read(std::string& value);
  // Any value, nested up to 128 deep.
  bool skip() { return skipBelow(0); }

  // Calls `readMember(key)` for each member, which has to take its value and tell whether it could.
  template <class ReadMember>
  bool readObject(ReadMember readMember) {
    if (!take('{')) return false;
    if (take('}')) return true;
    std::string key;
    do {
      if (!read(key) || !take(':') || !readMember(std::as_const(key))) return false;
    } while (take(','));
    return take('}');
  }

  // Calls `readItem()` for each item, which has to take it and tell whether it could.
  template <class ReadItem>
  bool readArray(ReadItem readItem) {
    if (!take('[')) return false;
    if (take(']')) return true;
    do {
      if (!readItem()) return false;
    } while (take(','));
    return take(']');
  }

  // Whether nothing but blanks is left.
  bool isAtEnd();

 private:
  struct Number {
    std::string_view text;  // empty: there is none
    bool hasFractionOrExponent = false;
  };
  template <class Integer>
  bool readInteger(Integer& value, double least, double beyond);
  Number takeNumber();
  bool skipBelow(int depth);
  void skipBlanks();
  bool take(char c);
  bool takeWord(std::string_view word);

  std::string_view rest_;
};

}  // namespace kestrune
