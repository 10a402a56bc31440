#include "platform/values/String.h"

#include <QString>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/values/Numbers.h"

namespace platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsScalar(char32_t code) { return code < 0xD800 || (code > 0xDFFF && code <= 0x10FFFF); }
bool IsDigit(char32_t c) { return c >= U'0' && c <= U'9'; }
bool IsBlank(char32_t c) { return c == U' ' || c == U'\t'; }

char32_t Fold(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 32 : c;
  return QChar::toCaseFolded(c);
}

bool SameFolded(char32_t a, char32_t b) { return a == b || Fold(a) == Fold(b); }

String Slice(const String& text, std::size_t first, std::size_t count) {
  return String(text.Characters().substr(first, count));
}

std::size_t Size(const String& text) { return text.Characters().size(); }

/// Index of the first occurrence at or after `from`, or npos.
std::size_t Find(const String& text, const String& find, std::size_t from) {
  const auto& in = text.Characters();
  const auto& what = find.Characters();
  const auto found =
      std::search(in.begin() + static_cast<std::ptrdiff_t>(from), in.end(), what.begin(), what.end(), SameFolded);
  return found == in.end() && !what.empty() ? std::u32string::npos : static_cast<std::size_t>(found - in.begin());
}

}  // namespace

String::String(const char* utf8) : String(std::string_view(utf8)) {}

String::String(const std::string& utf8) : String(std::string_view(utf8)) {}

String::String(std::string_view utf8)
    : characters_(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toStdU32String()) {
  if (utf8.starts_with("\uFEFF")) characters_.insert(0, 1, U'\uFEFF');  // which Qt takes for a byte order mark
}

String String::FromBytes(std::span<const std::uint8_t> bytes) {
  return String(std::u32string(bytes.begin(), bytes.end()));
}

std::string String::Utf8() const {
  // Character by character: Qt would take the first one for a byte order mark if it looks like one.
  QString text;
  for (const char32_t c : characters_) text += QStringView(QChar::fromUcs4(IsScalar(c) ? c : kReplacement));
  return text.toStdString();
}

int String::Compare(const String& a, const String& b) {
  const auto [endA, endB] =
      std::mismatch(a.characters_.begin(), a.characters_.end(), b.characters_.begin(), b.characters_.end(), SameFolded);
  if (endA == a.characters_.end() || endB == b.characters_.end())
    return (endA != a.characters_.end()) - (endB != b.characters_.end());
  return Fold(*endA) < Fold(*endB) ? -1 : 1;
}

int Len(const String& text) { return static_cast<int>(Size(text)); }

String Left(const String& text, int count) { return Slice(text, 0, static_cast<std::size_t>(std::max(count, 0))); }

String Right(const String& text, int count) {
  const auto wanted = std::min(static_cast<std::size_t>(std::max(count, 0)), Size(text));
  return Slice(text, Size(text) - wanted, wanted);
}

String Mid(const String& text, int start, int count) {
  const auto first = static_cast<std::size_t>(std::max(start, 1)) - 1;
  if (count < 1 || first >= Size(text)) return {};
  return Slice(text, first, static_cast<std::size_t>(count));
}

String Mid(const String& text, int start) { return Mid(text, start, std::numeric_limits<int>::max()); }

int InStr(const String& text, const String& find) {
  const auto found = Find(text, find, 0);
  return found == std::u32string::npos ? 0 : static_cast<int>(found) + 1;
}

String NthField(const String& text, const String& separator, int n) {
  if (n < 1) return {};
  // Nothing is split at an empty separator.
  if (separator.Empty()) return n == 1 ? text : String();
  std::size_t begin = 0;
  for (;; --n) {
    const auto end = Find(text, separator, begin);
    if (n == 1) return Slice(text, begin, end == std::u32string::npos ? end : end - begin);
    if (end == std::u32string::npos) return {};
    begin = end + Size(separator);
  }
}

String Lowercase(const String& text) {
  std::u32string lower = text.Characters();
  for (char32_t& c : lower) c = QChar::toLower(c);
  return String(std::move(lower));
}

int Asc(const String& text) { return text.Empty() ? 0 : static_cast<int>(text.Characters().front()); }

String Chr(int code) {
  const auto character = static_cast<char32_t>(code);
  return String(std::u32string(1, IsScalar(character) ? character : kReplacement));
}

String Join(const Array<String>& pieces, const String& separator) {
  String joined;
  for (int i = 0; i <= pieces.Ubound(); ++i) {
    if (i > 0) joined += separator;
    joined += pieces(i);
  }
  return joined;
}

String EndOfLine() { return "\n"; }

bool IsNumeric(const String& text) {
  std::u32string_view rest = text.Characters();
  while (!rest.empty() && IsBlank(rest.front())) rest.remove_prefix(1);
  while (!rest.empty() && IsBlank(rest.back())) rest.remove_suffix(1);
  if (!rest.empty() && (rest.front() == U'+' || rest.front() == U'-')) rest.remove_prefix(1);
  const auto digits = std::count_if(rest.begin(), rest.end(), IsDigit);
  const auto points = std::count(rest.begin(), rest.end(), U'.');
  return digits > 0 && points <= 1 && static_cast<std::size_t>(digits + points) == rest.size();
}

String Str(std::int64_t number) { return std::to_string(number); }

double Val(const String& text) {
  const std::string bytes = text.Utf8();
  std::string_view rest = bytes;
  while (!rest.empty() && (rest.front() == ' ' || rest.front() == '\t')) rest.remove_prefix(1);
  const bool negative = !rest.empty() && rest.front() == '-';
  if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) rest.remove_prefix(1);
  if (rest.empty() || !(IsDigit(static_cast<unsigned char>(rest.front())) || rest.front() == '.')) return 0.0;
  // A number outside the range of a double gives 0 as well.
  double value = 0.0;
  std::from_chars(rest.data(), rest.data() + rest.size(), value, std::chars_format::fixed);
  return negative && value != 0.0 ? -value : value;
}

String Format(double number, const String& mask) {
  const double rounded = std::isfinite(number) ? Round(number) : 0.0;
  // The largest double has 309 digits before the point.
  char digits[320];
  const auto end = std::to_chars(digits, digits + sizeof digits, std::fabs(rounded), std::chars_format::fixed, 0).ptr;
  std::string text(digits, end);
  const auto& places = mask.Characters();
  const auto wanted = static_cast<std::size_t>(std::count(places.begin(), places.end(), U'0'));
  if (text.size() < wanted) text.insert(0, wanted - text.size(), '0');
  if (rounded < 0.0) text.insert(0, 1, '-');
  return text;
}

}  // namespace platform
