#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace kestrune {

// Reads JSON from front to back, straight into the caller's variables. It builds no tree, which makes it
// several times faster. Each operation consumes one whole value. False: the next value is not of the expected
// kind, and nothing more can be read. The text must outlive the reader.
class JsonReader {
 public:
  explicit JsonReader(std::string_view text) : rest_(text) {}

  // Fails if the number overflows, or underflows to 0.
  bool read(double& value);
  // Only whole numbers in range. 5.0 and 5e0 are whole.
  bool read(std::int64_t& value);
  bool read(std::uint64_t& value);
  bool read(std::string& value);
  // Any value, nested up to 128 deep.
  bool skip() { return skipBelow(0); }

  // Calls `readMember(key)` for each member. It must consume the value and return whether it could.
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

  // Calls `readItem()` for each item. It must consume the item and return whether it could.
  template <class ReadItem>
  bool readArray(ReadItem readItem) {
    if (!take('[')) return false;
    if (take(']')) return true;
    do {
      if (!readItem()) return false;
    } while (take(','));
    return take(']');
  }

  // True if only whitespace is left.
  bool isAtEnd();

 private:
  struct Number {
    std::string_view text;  // empty: no number
    bool hasFractionOrExponent = false;
  };
  template <class Integer>
  bool readInteger(Integer& value, double min, double beyond);
  Number takeNumber();
  bool skipBelow(int depth);
  void skipBlanks();
  bool take(char c);
  bool takeWord(std::string_view word);

  std::string_view rest_;
};

}  // namespace kestrune
