#include <gtest/gtest.h>

#include <algorithm>

#include "stack/ColorTables.h"

using platform::Color;

namespace {

struct Expected {
  const char* name;
  Color entry1, entry64, entry128, entry192, entry254;
  unsigned sum;  // of entry i times i, over all 256
};

constexpr Expected kExpected[] = {
    {"01 Hot Metal", 0x010000, 0x6d0000, 0xde0000, 0xff7600, 0xffff00, 613477376},
    {"02 Hot Metal Light", 0x020000, 0xff1100, 0xff6100, 0xffb200, 0xffff00, 2709582336},
    {"03 White-Yellow-Red-Black", 0xffffff, 0xffff2e, 0xfe9a00, 0xfe0000, 0x000000, 2360285177},
    {"04 Earth", 0x000000, 0x2d0058, 0x73ddd0, 0xbe542b, 0xfefefe, 3689052316},
    {"05 Earth-Land Tones", 0x187914, 0xbae21c, 0xd07421, 0xd68c6d, 0xf9ece4, 1595140799},
    {"06 Earth-Sea Tones", 0x000000, 0x200029, 0x1e0072, 0x2d8fbe, 0xcbf7dc, 3084774727},
    {"07 GrayScale", 0x000000, 0x3f3f3f, 0x808080, 0xc1c1c1, 0xffffff, 1655264322},
    {"08 GrayScale-Squeezed", 0x000000, 0x212121, 0x828282, 0xe8e8e8, 0xfbfbfb, 892327163},
    {"09 GrayScale-Inverted", 0xffffff, 0xc0c0c0, 0x7f7f7f, 0x3e3e3e, 0x000000, 492186681},
    {"10 Rainbow", 0x7c00ff, 0x009efe, 0x00fe3e, 0xe1fe00, 0xff0000, 2499560508},
    {"11 Rainbow-(Dark->Light)", 0x000000, 0x00436c, 0x00db35, 0xe2ff00, 0xff0400, 2406215515},
    {"12 Rainbow-(Dark->Light)-NoGreen", 0x000000, 0x000974, 0x00eab9, 0xff6400, 0xff006c, 716155424},
    {"13 Rainbow-(Dark->Light)-Pastel", 0x240421, 0x4625ff, 0x79cde0, 0xcfab09, 0xe90000, 739195624},
    {"14 Rainbow-Dark", 0x150020, 0x001dcb, 0x00d6d0, 0xc89000, 0xff0000, 3735455233},
    {"15 Rainbow-Darker", 0x5200a7, 0x0068a7, 0x00a728, 0x94a700, 0xa70300, 1785027180},
    {"16 Rainbow-Light", 0xad5eff, 0x5ec3ff, 0x5eff86, 0xedff5e, 0xff615e, 3011851236},
    {"17 Rainbow-Reduced Green", 0x400078, 0x0036d9, 0x00d6e1, 0xc4a200, 0xf80000, 1136483917},
    {"18 Rainbow-Squeezed", 0xb800ff, 0x000bff, 0x1bfe00, 0xff7000, 0xff0000, 1890132679},
    {"19 Rainbow-Temperature", 0x54004c, 0x001db2, 0xdaffee, 0xbdff00, 0xff0100, 3569255070},
    {"20 World Colors Rainbow", 0x00002a, 0x000e6c, 0x00af78, 0xf2a900, 0xff0000, 3503772041},
};

ParsedTable Table(int row) { return ParseColorTable(ColorTableLines()(row - 1)); }

}  // namespace

TEST(ColorTables, HaveTheirNamesAndFixedColours) {
  ASSERT_EQ(ColorTableLines().Ubound(), 19);
  for (int row = 1; row <= 20; ++row) {
    const Expected& expected = kExpected[row - 1];
    const std::string line = ColorTableLines()(row - 1).Utf8();
    EXPECT_EQ(std::ranges::count(line, ','), 256);
    EXPECT_TRUE(line.find(",16777215,") == line.find(',') && line.ends_with(",0")) << "the markers around the colours";
    const ParsedTable table = Table(row);
    EXPECT_EQ(table.name.Utf8(), expected.name);
    const auto& c = table.colors;
    unsigned sum = 0;
    for (std::size_t i = 0; i < 256; ++i) sum += static_cast<unsigned>(i) * c[i];
    EXPECT_EQ(sum, expected.sum) << expected.name;
    EXPECT_TRUE(c[0] == c[1] && c[255] == c[254]) << expected.name;
    EXPECT_TRUE(c[1] == expected.entry1 && c[64] == expected.entry64 && c[128] == expected.entry128 &&
                c[192] == expected.entry192 && c[254] == expected.entry254)
        << expected.name;
  }
}
