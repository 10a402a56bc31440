#include <gtest/gtest.h>

#include "platform/values/String.h"

namespace platform {
namespace {

TEST(String, CountsCharactersAndKeepsThemThroughUtf8) {
  const std::string text = "\uFEFFGr\u00f6\u00dfe \u00b5 \U0001D538";  // begins with a byte order mark
  EXPECT_EQ(Len(text), 10);
  EXPECT_EQ(String(text).Utf8(), text);
  EXPECT_EQ(Asc(Mid(text, 10)), 0x1D538);
}

TEST(String, ReplacesEachInvalidByte) {
  const std::pair<const char*, const char32_t*> cases[] = {
      {"x\xFFy\xC3", U"x\uFFFDy\uFFFD"},
      {"\xC0\xAF", U"\uFFFD\uFFFD"},  // overlong
      {"\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD"},
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last plane
      {"\xE2\x82Z", U"\uFFFD\uFFFDZ"},                    // cut short
      {"\xEF\xBF\xBF\xF4\x8F\xBF\xBF", U"\uFFFF\U0010FFFF"}};
  for (const auto& [bytes, characters] : cases) EXPECT_EQ(String(bytes).Characters(), characters) << bytes;
  EXPECT_EQ(String(std::u32string{0xD800, 0x110000}).Utf8(), "\uFFFD\uFFFD");
  const std::uint8_t bytes[] = {'S', 'i', 0xB5};
  EXPECT_TRUE(String::FromBytes(bytes).Identical("Si\u00b5"));
}

TEST(String, ComparesWithoutLetterCase) {
  EXPECT_EQ(String("FE"), String("fe"));
  EXPECT_FALSE(String("FE").Identical("fe"));
  EXPECT_EQ(String("\u00c4\u00d6\u00dc"), String("\u00e4\u00f6\u00fc"));
  EXPECT_EQ(String("\u03a3"), String("\u03c2")) << "both sigmas fold to one";
  EXPECT_NE(String("\u00df"), String("ss")) << "folding never changes the length";
  EXPECT_LT(String("a"), String("B"));
  EXPECT_GT(String("b"), String("A"));
  EXPECT_LT(String("Fe"), String("feo"));
  EXPECT_LT(String("Z"), String("\u00e4"));
  EXPECT_LT(String("_"), String("Z")) << "order is that of the folded letter, here z";
}

TEST(String, ReturnsPieces) {
  const std::pair<String, const char*> cases[] = {
      {Left("abc", 2), "ab"},    {Left("abc", 9), "abc"}, {Left("abc", -1), ""},   {Right("abc", 2), "bc"},
      {Right("abc", 9), "abc"},  {Right("abc", 0), ""},   {Mid("abc", 2, 1), "b"}, {Mid("abc", 2), "bc"},
      {Mid("abc", -5, 2), "ab"}, {Mid("abc", 4, 1), ""},  {Mid("abc", 2, -3), ""}, {Mid("abc", 3, 2147483647), "c"}};
  for (const auto& [piece, expected] : cases) EXPECT_EQ(piece.Utf8(), expected);
}

TEST(String, FindsAndSplitsWithoutLetterCase) {
  for (const auto& [text, part, place] :
       {std::tuple{"map.TIF", ".tif", 4}, {"aab", "ab", 2}, {"ab", "abc", 0}, {"", "a", 0}, {"", "", 1}})
    EXPECT_EQ(InStr(text, part), place) << text;
  const std::pair<String, const char*> fields[] = {
      {NthField("FexMgXSi", "x", 2), "Mg"}, {NthField("FexMgXSi", "x", 3), "Si"}, {NthField("FexMgXSi", "x", 4), ""},
      {NthField("a,,b", ",", 2), ""},       {NthField("a,,b", ",", 0), ""},       {NthField("ab", "", 1), "ab"}};
  for (const auto& [field, expected] : fields) EXPECT_EQ(field.Utf8(), expected);
  EXPECT_TRUE(Join({"Fe", "Mg", "Si"}, ", ").Identical("Fe, Mg, Si"));
  EXPECT_TRUE(Lowercase("F\u00c4.TIF").Identical("f\u00e4.tif"));
}

TEST(String, ReadsNumbers) {
  for (const char* text : {"7", "-1", "+.5", " 3. ", "12.75"}) EXPECT_TRUE(IsNumeric(text)) << text;
  for (const char* text : {"", " ", ".", "-", "1-", "1.2.3", "1 2", "a", "1e3", "\u0663"})
    EXPECT_FALSE(IsNumeric(text)) << text;
  for (const auto& [text, value] :
       {std::pair{"12.5 keV", 12.5}, {" -3", -3.0}, {"1e3", 1.0}, {"inf", 0.0}, {"- 1", 0.0}, {"", 0.0}})
    EXPECT_EQ(Val(text), value) << text;
}

TEST(String, WritesNumbers) {
  EXPECT_TRUE(Str(-9223372036854775807 - 1).Identical("-9223372036854775808"));
  for (const auto& [number, mask, text] : {std::tuple{2., "00", "02"},
                                           {100, "00", "100"},
                                           {-7.5, "#00", "-07"},
                                           {-0.4, "0", "0"},
                                           {0.5, "#", "1"},
                                           {1e300 * 1e300, "00", "00"}})
    EXPECT_EQ(Format(number, mask).Utf8(), text) << "halves round upward";
  EXPECT_TRUE(Chr(31).Identical("\x1F"));
  EXPECT_EQ(Asc(""), 0);
  EXPECT_EQ(Asc(Chr(-1)), 0xFFFD);
}

}  // namespace
}  // namespace platform
