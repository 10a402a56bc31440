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

}  // namespace
}  // namespace platform
