#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "platform/pictures/readers/PictureReaders.h"

// The files are written by tools/odd_picts.py, by netpbm and by ImageMagick; here is how each of them looks.

namespace platform {
namespace {

using Look = std::function<Color(int x, int y)>;

OpenedPicture OpenOdd(const std::string& name) {
  return ReadPicture(std::filesystem::path(VORNALITE_SOURCE_DIR) / "tests/odd" / name);
}

void ExpectLooks(const std::string& name, int width, int height, const Look& look, int tolerance = 0) {
  SCOPED_TRACE(name);
  const OpenedPicture opened = OpenOdd(name);
  ASSERT_TRUE(opened.picture) << opened.failure.Utf8();
  ASSERT_EQ(opened.picture->Width(), width);
  ASSERT_EQ(opened.picture->Height(), height);
  const auto pixels = opened.picture->Pixels();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const Color actual = pixels(x, y), expected = look(x, y);
      const int difference = std::max({std::abs(Red(actual) - Red(expected)), std::abs(Green(actual) - Green(expected)),
                                       std::abs(Blue(actual) - Blue(expected))});
      ASSERT_LE(difference, tolerance) << "at " << x << ", " << y << ": " << std::hex << actual << " not " << expected;
    }
}

constexpr int kWidth = 70, kHeight = 5;

int Value(int x, int y) { return ((x < 30 ? x / 6 : x) * 29 + y * 7) % 256; }
/// 12 x 6 grey levels.
int Count(int x, int y) { return x == 5 && y == 0 ? 200 : (x * 17 + y * 3) % 201; }

Color Grey(int level) { return RGB(level, level, level); }
Color Spectrum(int i) { return RGB(i, 255 - i, i / 2); }

int OnWhite(int level, int alpha) {
  return static_cast<int>(std::lround((level * alpha + 255. * (255 - alpha)) / 255));
}

const Look kBlackAndWhite = [](int x, int y) { return Value(x, y) % 2 ? kBlack : kWhite; };
const Look kColors = [](int x, int y) { return Spectrum(Value(x, y)); };
const Look kColors16 = [](int x, int y) {
  const int v = Value(x, y);
  const auto level = [](int i) { return static_cast<int>(std::lround(i * 255 / 31.)); };
  return RGB(level(v % 32), level(v / 8), level(31 - v % 32));
};
const Look kColorsOnWhite = [](int x, int y) {
  const int v = Value(x, y), alpha = 255 - v;
  return RGB(OnWhite(v, alpha), OnWhite(255 - v, alpha), OnWhite(v / 2, alpha));
};
const Look kCounts = [](int x, int y) { return Grey(Count(x, y)); };

Look Masked(const Look& look, const std::function<bool(int, int)>& mask) {
  return [=](int x, int y) { return mask(x, y) ? look(x, y) : kWhite; };
}

bool InRegion(int x, int y) {
  if (y < 1 || y > 3 || x < 10 || x >= 40) return false;
  return y == 1 || x < 20 || x >= 30;
}

TEST(PictReader, DepthsAndPackings) {
  const struct {
    const char* name;
    Look look;
  } cases[] = {
      {"bit-map.pict", kBlackAndWhite},
      {"bit-map-region.pict", Masked(kBlackAndWhite, InRegion)},
      {"packed-bit-map.pict", kBlackAndWhite},
      {"packed-bit-map-region.pict",
       Masked(kBlackAndWhite, [](int x, int y) { return x >= 5 && x < 60 && y >= 1 && y < 4; })},
      {"packed-bit-map-version-1.pict", kBlackAndWhite},
      {"1-bit-red-and-blue.pict", [](int x, int y) { return Value(x, y) % 2 ? RGB(0, 0, 255) : RGB(255, 0, 0); }},
      {"2-bits.pict", [](int x, int y) { return Grey(Value(x, y) % 4 * 85); }},
      {"4-bits.pict", [](int x, int y) { return Grey(Value(x, y) % 16 * 17); }},
      {"8-bits.pict", kColors},
      {"8-bits-not-packed.pict", kColors},
      {"16-bits.pict", kColors16},
      {"16-bits-not-packed.pict", kColors16},
      {"16-bits-pack-type-3-region.pict", Masked(kColors16, InRegion)},
      {"32-bits.pict", kColors},
      {"32-bits-not-packed.pict", kColors},
      {"32-bits-no-pad-byte.pict", kColors},
      {"32-bits-pack-type-4.pict", kColors},
      {"32-bits-alpha.pict", kColorsOnWhite},
      {"32-bits-alpha-not-packed.pict", kColorsOnWhite},
      {"32-bits-alpha-unused.pict", kColors},
  };
  for (const auto& [name, look] : cases) ExpectLooks(name, kWidth, kHeight, look);
  ExpectLooks("16-bits-narrow.pict", 3, kHeight, kColors16);
  ExpectLooks("long-rows.pict", 1004, 3, [](int x, int y) { return Grey(Value(x, y) % 4 * 85); });
}

TEST(PictReader, SizeAndPlaces) {
  const auto shade = [](int x, int y) { return Grey(Count(x, y) % 16 * 17); };
  ExpectLooks("placed-and-scaled.pict", 36, 12, [&](int x, int y) {
    if (x < 6 && y >= 9) return shade(x + 6, y - 9);
    if (x < 24) return shade(x / 2, y / 2);
    if (x >= 30 && x < 34 && y < 3) return shade((x - 30) * 3 + 1, y * 2 + 1);
    if (x >= 30 && x < 34 && y >= 4 && y < 6) return shade(x - 30 + 2, y - 4 + 1);
    return kWhite;
  });
  ExpectLooks("source-rectangle-and-frame-differ.pict", kWidth, kHeight, kColors);
  ExpectLooks("clip-smaller-than-frame.pict", kWidth, kHeight, kColors);
}

TEST(PictReader, OtherOpcodesAreSkipped) {
  ExpectLooks("all-opcodes-version-1.pict", kWidth, kHeight, kBlackAndWhite);
  ExpectLooks("all-opcodes-version-2.pict", kWidth, kHeight, kBlackAndWhite);
}

TEST(PictReader, QuickTime) {
  ExpectLooks(
      "quicktime-jpeg.pict", 16, 8, [](int x, int) { return Grey(x < 8 ? 40 : 200); }, 2);
  ExpectLooks("quicktime-tiff.pict", 12, 6, kCounts);
  ExpectLooks("quicktime-not-compressed.pict", 12, 6, kCounts);
  ExpectLooks("quicktime-png-placed.pict", 36, 12, [](int x, int y) {
    if (x < 24 && !(x >= 24 && y >= 5)) return Grey(Count(x / 2, y / 2));
    if (x >= 25 && x < 29 && y >= 5 && y < 7) return Grey(Count(x - 20, y - 3));
    return kWhite;
  });
  const Look bands[] = {kColors,
                        [](int x, int y) { return Grey(255 - Value(x, y)); },
                        [](int x, int y) { return Grey(255 - Value(x, y) % 16 * 17); },
                        kColors,
                        kColorsOnWhite,
                        kColors16};
  ExpectLooks("quicktime-raw-bands.pict", kWidth, 6 * kHeight,
              [&](int x, int y) { return bands[y / kHeight](x, y % kHeight); });
}

TEST(PictReader, FilesOfOtherPrograms) {
  const Look spectrum = [](int x, int y) { return Spectrum(Count(x, y)); };
  ExpectLooks("netpbm.pict", 12, 6, spectrum);
  ExpectLooks("imagemagick.pict", 12, 6, spectrum);
  ExpectLooks("imagemagick-1-bit.pict", 12, 6, [](int x, int y) { return Count(x, y) >= 100 ? kWhite : kBlack; });
  ExpectLooks("imagemagick-alpha.pict", 12, 6, [](int x, int y) {
    const int c = Count(x, y), alpha = x * 21;
    return RGB(OnWhite(c, alpha), OnWhite(255 - c, alpha), OnWhite(c / 2, alpha));
  });
  ExpectLooks(
      "imagemagick-jpeg.pict", 16, 8, [](int x, int) { return Grey(x < 8 ? 40 : 200); }, 3);
}

TEST(PictReader, RefusesForTheRightReason) {
  const std::pair<const char*, const char*> cases[] = {
      {"vectors-alone.pict", "unsupported: it holds no raster"},
      {"quicktime-road-pizza.pict", "unsupported compression: QuickTime rpza"},
      {"quicktime-pict-as-jpeg.pict", "truncated or damaged: QuickTime image: no JPEG"},
      {"3-bits.pict", "unsupported depth: PICT of 3 bits"},
      {"rows-of-too-few-pixels.pict", "truncated or damaged: a row of the PICT has too few pixels"},
      {"row-bytes-too-few.pict", "truncated or damaged: rows of the PICT shorter than its width"},
      {"lies-30000-x-30000.pict", "truncated: 2760 bytes cannot hold 30000 x 30000 pixels"},
      {"paints-over-and-over.pict", "truncated or damaged: 835 bytes cannot hold all these pixels"},
  };
  for (const auto& [name, failure] : cases) EXPECT_EQ(OpenOdd(name).failure.Utf8(), failure) << name;
}

}  // namespace
}  // namespace platform
