#include "catalogue/SpeciesNames.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/values/BackgroundTask.h"

using platform::Array;
using platform::Left;
using platform::Len;
using platform::Mid;
using platform::Right;
using platform::String;

namespace {

constexpr const char* kExtensions[] = {"doc",  "txt", "text", "pic", "pict", "pct", "jpg",
                                       "jpeg", "tif", "tiff", "png", "bmp",  "xray"};

const String& AllowedCharacters() {
  static const String allowed(
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZäöüßÄÖÜµ1234567890-+()[]{}&%$#@!?<>^~");
  return allowed;
}

bool FoundAllowed(char32_t character) {
  return platform::InStr(AllowedCharacters(), String(std::u32string(1, character))) > 0;
}

/// Caches the result for the codes below 256.
bool IsAllowed(char32_t character) {
  static const auto common = [] {
    std::array<bool, 256> allowed{};
    for (char32_t code = 0; code < allowed.size(); ++code) allowed[code] = FoundAllowed(code);
    return allowed;
  }();
  return character < common.size() ? common[character] : FoundAllowed(character);
}

using Character = std::u32string_view;  // one character; empty for an empty name
using Position = std::uint64_t;         // 64 bits: never overflows in practice

Character FromFront(const String& name, Position position) {
  const Character all = name.Characters();
  return all.empty() ? all : all.substr(std::min<Position>(position, all.size()) - 1, 1);
}

Character FromBack(const String& name, Position position) {
  const Character all = name.Characters();
  return all.empty() ? all : all.substr(all.size() - std::min<Position>(position, all.size()), 1);
}

bool Same(Character a, Character b) { return a == b || String(std::u32string(a)) == String(std::u32string(b)); }

/// The first position where a name differs from the first one. Beyond its end a name continues with its outermost
/// character. The scan has no limit: it never ends for names that do not differ, and that is intended.
Position FirstDifference(const Array<String>& names, Character (*at)(const String&, Position)) {
  for (Position position = 1;; ++position) {
    platform::BackgroundTask();
    const Character expected = at(names(0), position);
    for (int i = 1; i <= names.Ubound(); ++i)
      if (!Same(expected, at(names(i), position))) return position;
  }
}

}  // namespace

String Globals::RemoveExtension(const String& name) {
  String answer = name;
  for (const char* extension : kExtensions) {
    const String ending = String(".") + extension;
    if (Lowercase(Right(name, Len(ending))) == ending) answer = Left(name, Len(name) - Len(ending));
  }
  return answer;
}

String Globals::CleanString(const String& name) {
  if (name.Empty()) return "?";
  std::u32string clean;
  for (const char32_t character : name.Characters()) {
    const char32_t kept = IsAllowed(character) ? character : U'_';
    if (kept != U'_' || clean.empty() || clean.back() != U'_') clean += kept;
  }
  if (clean.back() == U'_') clean.pop_back();
  return String(std::move(clean));
}

String StripCommon(const Array<String>& names, Array<String>& shorts) {
  const String& common = names(0);
  if (names.Ubound() != shorts.Ubound()) return Globals::CleanString(common);
  if (names.Ubound() < 1 || names(0) == names(1)) {
    for (int i = 0; i <= names.Ubound(); ++i) shorts(i) = Globals::CleanString(names(i));
    return Globals::CleanString(common);
  }
  // A scan that ends does so within the longest name, so both positions fit an int.
  const int front = static_cast<int>(FirstDifference(names, FromFront));
  const int back = static_cast<int>(FirstDifference(names, FromBack));
  for (int i = 0; i <= names.Ubound(); ++i) {
    // If front and back overlap in a short name, the count is negative and the rest is empty.
    const String rest = Mid(names(i), front, Len(names(i)) - front - back + 2);
    shorts(i) = rest.Empty() || rest == " " ? String("?") : Globals::CleanString(rest);
  }
  return Globals::CleanString(Left(names(0), front - 1) + Right(names(0), back - 1));
}

void RemoveSuffixes(Array<String>& names) {
  const auto dropDigit = [](String& name) {
    if (Len(name) > 1 && platform::IsNumeric(Right(name, 1))) name = Left(name, Len(name) - 1);
  };
  for (String& name : names) {
    if (Len(name) > 2 && Mid(name, Len(name) - 1, 1) == "_") name = Left(name, Len(name) - 2);
    dropDigit(name);
    dropDigit(name);
  }
}
