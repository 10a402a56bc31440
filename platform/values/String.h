#pragma once
/// Character strings. Lengths and positions count characters, not bytes; the first character has position 1. Equality,
/// order and search ignore letter case. In memory a string is a sequence of Unicode scalar values; outside it is UTF-8.

#include <compare>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/values/Array.h"

namespace platform {

class String {
 public:
  String() = default;
  /// From UTF-8. Each byte that is not valid UTF-8 becomes U+FFFD.
  String(const char* utf8);
  String(std::string_view utf8);
  String(const std::string& utf8);
  explicit String(std::u32string characters) : characters_(std::move(characters)) {}
  /// One character per byte, for text without a stated encoding.
  static String FromBytes(std::span<const std::uint8_t> bytes);

  std::string Utf8() const;
  const std::u32string& Characters() const { return characters_; }
  bool Empty() const { return characters_.empty(); }

  /// Ignore letter case. The order is that of the case-folded character codes, the same on every machine.
  friend bool operator==(const String& a, const String& b) { return Compare(a, b) == 0; }
  friend std::weak_ordering operator<=>(const String& a, const String& b) { return Compare(a, b) <=> 0; }
  /// The same characters in the same case.
  bool Identical(const String& other) const { return characters_ == other.characters_; }

  String& operator+=(const String& other) {
    characters_ += other.characters_;
    return *this;
  }
  friend String operator+(String a, const String& b) { return std::move(a += b); }

 private:
  static int Compare(const String& a, const String& b);

  std::u32string characters_;
};

int Len(const String& text);
/// The first or last `count` characters; all of the text if it is shorter, none for a count below 1.
String Left(const String& text, int count);
String Right(const String& text, int count);
/// `count` characters from position `start`, fewer at the end of the text. Empty for a count below 1. A start below 1
/// counts as 1.
String Mid(const String& text, int start, int count);
String Mid(const String& text, int start);
/// Position of the first occurrence, or 0. An empty `find` is found at 1.
int InStr(const String& text, const String& find);
/// The n-th piece, from 1, of the text split at each separator; empty when there are fewer.
String NthField(const String& text, const String& separator, int n);
String Lowercase(const String& text);
/// Code of the first character, 0 for the empty string; and the string of one character.
int Asc(const String& text);
String Chr(int code);
String Join(const Array<String>& pieces, const String& separator);
/// The end-of-line string of messages.
String EndOfLine();
/// Whether the text is a plain decimal number: digits with an optional sign and point, blanks around it allowed.
bool IsNumeric(const String& text);
String Str(std::int64_t number);
String Str(std::same_as<bool> auto) = delete;
/// The decimal number at the beginning of the text, after blanks; 0 if there is none.
double Val(const String& text);
/// Formats the number rounded to a whole number, with at least as many digits as the mask has zeros, for example
/// Format(7, "#00") is "07". Negative numbers have a minus sign.
String Format(double number, const String& mask);

}  // namespace platform
