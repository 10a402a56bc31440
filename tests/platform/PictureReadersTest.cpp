#include <gtest/gtest.h>
#include <sys/stat.h>
#include <tiffio.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/PictureReaders.h"
#include "tests/support/Folder.h"

namespace platform {
namespace {

using Bytes = std::vector<std::uint8_t>;

std::filesystem::path OddFolder() { return std::filesystem::path(VORNALITE_SOURCE_DIR) / "tests/odd"; }

Bytes FileContent(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), {});
}

Bytes LevelsOf(const OpenedPicture& opened) {
  EXPECT_TRUE(opened.picture) << opened.failure.Utf8();
  if (!opened.picture) return {};
  const auto levels = opened.picture->GreyLevels();
  return Bytes(levels.begin(), levels.end());
}

std::vector<Color> ColorsOf(const OpenedPicture& opened) {
  EXPECT_TRUE(opened.picture) << opened.failure.Utf8();
  if (!opened.picture) return {};
  const auto pixels = opened.picture->Pixels();
  return {pixels.data, pixels.data + pixels.width * pixels.height};
}

void ExpectNear(Color actual, Color expected, int tolerance) {
  EXPECT_NEAR(Red(actual), Red(expected), tolerance);
  EXPECT_NEAR(Green(actual), Green(expected), tolerance);
  EXPECT_NEAR(Blue(actual), Blue(expected), tolerance);
}

// A TIFF written by libtiff.

struct Kind {
  const char* name;
  int bits;
  int format = 0;  // 0: no tag
  int compression = COMPRESSION_NONE;
  int photometric = PHOTOMETRIC_MINISBLACK;
  const char* mode = "wl";  // byte order, and 8 for the large kind
  bool tiled = false;
  int samples = 1;
  bool separate = false;
  int alpha = -1;  // kind of the last sample
};

constexpr int kWidth = 37;
constexpr int kHeight = 29;

/// `sample(x, y, s)` as the bits of a number.
using Samples = std::function<std::uint64_t(int, int, int)>;

void AppendBits(Bytes& row, int& used, std::uint64_t value, int bits) {
  for (int bit = bits - 1; bit >= 0; --bit, ++used) {
    if (used % 8 == 0) row.push_back(0);
    row.back() = static_cast<std::uint8_t>(row.back() | ((value >> bit & 1) << (7 - used % 8)));
  }
}

Bytes Row(const Kind& kind, const Samples& sample, int left, int width, int y, int plane) {
  Bytes row;
  int used = 0;
  for (int x = left; x < left + width; ++x)
    for (int s = kind.separate ? plane : 0; s < (kind.separate ? plane + 1 : kind.samples); ++s) {
      const std::uint64_t value = sample(std::min(x, kWidth - 1), std::min(y, kHeight - 1), s);
      if (kind.bits % 8 == 0 && kind.bits != 24)
        row.insert(row.end(), reinterpret_cast<const std::uint8_t*>(&value),
                   reinterpret_cast<const std::uint8_t*>(&value) + kind.bits / 8);
      else
        AppendBits(row, used, value, kind.bits);
    }
  return row;
}

Bytes WriteTiff(const Kind& kind, const Samples& sample, const std::function<void(TIFF*)>& moreTags = {}) {
  const Folder folder;
  const auto path = folder.Path() / "map.tif";
  TIFF* tiff = TIFFOpen(path.c_str(), kind.mode);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, kWidth);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, kHeight);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, kind.bits);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, kind.samples);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, kind.photometric);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, kind.compression);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, kind.separate ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
  if (kind.format) TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, kind.format);
  if (kind.alpha >= 0) {
    const auto extra = static_cast<std::uint16_t>(kind.alpha);
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
  }
  if (kind.tiled) {
    TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
    TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
  } else {
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 8);
  }
  if (kind.compression == COMPRESSION_JPEG) TIFFSetField(tiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
  if (moreTags) moreTags(tiff);
  const int width = kind.tiled ? 16 : kWidth, height = kind.tiled ? 16 : 8;
  for (int plane = 0; plane < (kind.separate ? kind.samples : 1); ++plane)
    for (int top = 0; top < kHeight; top += height)
      for (int left = 0; left < kWidth; left += width) {
        Bytes block;
        for (int y = top; y < (kind.tiled ? top + height : std::min(top + height, kHeight)); ++y)
          std::ranges::copy(Row(kind, sample, left, width, y, plane), std::back_inserter(block));
        const auto x = static_cast<std::uint32_t>(left), y = static_cast<std::uint32_t>(top);
        const auto s = static_cast<std::uint16_t>(plane);
        EXPECT_GE(kind.tiled
                      ? TIFFWriteTile(tiff, block.data(), x, y, 0, s)
                      : TIFFWriteEncodedStrip(tiff, TIFFComputeStrip(tiff, y, s), block.data(), std::ssize(block)),
                  std::ssize(block));
      }
  TIFFClose(tiff);
  return FileContent(path);
}

template <class F>
Bytes Everywhere(F level) {
  Bytes levels;
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) levels.push_back(static_cast<std::uint8_t>(level(x, y)));
  return levels;
}

const Kind kGreyKinds[] = {
    {"1 bit", 1},
    {"1 bit, white is 0, LZW", 1, 0, COMPRESSION_LZW, PHOTOMETRIC_MINISWHITE},
    {"1 bit, fax rows", 1, 0, COMPRESSION_CCITTRLE, PHOTOMETRIC_MINISWHITE},
    {"1 bit, fax 3", 1, 0, COMPRESSION_CCITTFAX3, PHOTOMETRIC_MINISWHITE},
    {"1 bit, fax 4", 1, 0, COMPRESSION_CCITTFAX4, PHOTOMETRIC_MINISBLACK},
    {"2 bits, tiled", 2, 0, COMPRESSION_NONE, PHOTOMETRIC_MINISBLACK, "wl", true},
    {"3 bits", 3},
    {"4 bits, PackBits", 4, 0, COMPRESSION_PACKBITS},
    {"6 bits, deflate", 6, 0, COMPRESSION_ADOBE_DEFLATE},
    {"8 bits", 8},
    {"8 bits, white is 0", 8, 1, COMPRESSION_NONE, PHOTOMETRIC_MINISWHITE, "wb"},
    {"8 bits, LZW", 8, 1, COMPRESSION_LZW},
    {"8 bits, deflate, large, big-endian", 8, 1, COMPRESSION_DEFLATE, PHOTOMETRIC_MINISBLACK, "wb8"},
    {"8 bits, PackBits, tiled", 8, 1, COMPRESSION_PACKBITS, PHOTOMETRIC_MINISBLACK, "wl", true},
    {"8 bits, LZMA", 8, 1, COMPRESSION_LZMA},
    {"8 bits, a sample that is no alpha", 8, 1, 1, 1, "wl", false, 2, false, EXTRASAMPLE_UNSPECIFIED},
    {"8 bits, three channels apart", 8, 1, COMPRESSION_LZW, 1, "wl", false, 3, true},
};

TEST(TiffReader, GreyOfUpTo8BitsFillsTheScale) {
  for (const Kind& kind : kGreyKinds) {
    SCOPED_TRACE(kind.name);
    const int fullScale = (1 << kind.bits) - 1;
    const auto value = [&](int x, int y) { return (x * 7 + y * 13 + x * y / 5) & fullScale; };
    const Bytes file = WriteTiff(kind, [&](int x, int y, int s) { return s == 0 ? value(x, y) : 99; });
    const Bytes expected = Everywhere([&](int x, int y) {
      const long level = std::lround(255.0 * value(x, y) / fullScale);
      return kind.photometric == PHOTOMETRIC_MINISWHITE ? 255 - level : level;
    });
    EXPECT_EQ(LevelsOf(ReadPicture(file)), expected);
  }
}

const Kind kDeepKinds[] = {
    {"8 bits, signed", 8, SAMPLEFORMAT_INT},
    {"9 bits", 9, 0, COMPRESSION_NONE},
    {"10 bits, big-endian", 10, 0, COMPRESSION_LZW, PHOTOMETRIC_MINISBLACK, "wb"},
    {"12 bits, packed", 12},
    {"12 bits, packed, tiled", 12, 1, COMPRESSION_DEFLATE, PHOTOMETRIC_MINISBLACK, "wl", true},
    {"12 bits, signed", 12, SAMPLEFORMAT_INT},
    {"16 bits, big-endian", 16, 1, COMPRESSION_NONE, PHOTOMETRIC_MINISBLACK, "wb"},
    {"16 bits, white is 0", 16, 1, COMPRESSION_LZW, PHOTOMETRIC_MINISWHITE},
    {"16 bits, signed, tiled", 16, SAMPLEFORMAT_INT, COMPRESSION_LZW, PHOTOMETRIC_MINISBLACK, "wb", true},
    {"16 bits, two channels", 16, 1, COMPRESSION_NONE, PHOTOMETRIC_MINISBLACK, "wl", false, 2},
    {"32 bits, no sample format", 32, 0, COMPRESSION_PACKBITS},
    {"32 bits, signed, big-endian", 32, SAMPLEFORMAT_INT, COMPRESSION_DEFLATE, PHOTOMETRIC_MINISBLACK, "wb"},
    {"64 bits, signed", 64, SAMPLEFORMAT_INT},
    {"float, big-endian, tiled", 32, SAMPLEFORMAT_IEEEFP, COMPRESSION_LZW, PHOTOMETRIC_MINISBLACK, "wb", true},
    {"float, no sample format", 32, -1},
    {"double", 64, SAMPLEFORMAT_IEEEFP, COMPRESSION_DEFLATE},
};

TEST(TiffReader, DeeperGreyIsScaledFromWhatItHolds) {
  for (Kind kind : kDeepKinds) {
    SCOPED_TRACE(kind.name);
    const bool isFloat = kind.format == SAMPLEFORMAT_IEEEFP || kind.format == -1;
    const int lowest = kind.format == SAMPLEFORMAT_INT || kind.format == SAMPLEFORMAT_IEEEFP ? -57 : 0;
    const int highest = kind.bits == 8 ? 127 : 200;
    kind.format = std::max(kind.format, 0);
    // From the lowest to the highest value, both of which occur.
    const auto value = [&](int x, int y) { return lowest + (x * 7 + y * 37) % (highest - lowest + 1); };
    const Bytes file = WriteTiff(kind, [&](int x, int y, int s) -> std::uint64_t {
      if (s > 0) return 511;
      if (isFloat && kind.bits == 32) return std::bit_cast<std::uint32_t>(static_cast<float>(value(x, y)) / 4);
      if (isFloat) return std::bit_cast<std::uint64_t>(value(x, y) * 1e30);
      return static_cast<std::uint64_t>(value(x, y));
    });
    const Bytes expected = Everywhere([&](int x, int y) {
      const int level = (510 * (value(x, y) - lowest) + (highest - lowest)) / (2 * (highest - lowest));
      return kind.photometric == PHOTOMETRIC_MINISWHITE ? 255 - level : level;
    });
    EXPECT_EQ(LevelsOf(ReadPicture(file)), expected);
  }
}

TEST(TiffReader, ColoursComeOutOnWhite) {
  const auto base = [](int x, int y, int s) { return (x * 5 + y * 3 + s * 71) & 255; };
  const auto deep = [&](int x, int y, int s) { return std::max(base(x, y, s) * 257 - 100, 0); };
  const auto onWhite = [&](int x, int y, int s) {
    const int alpha = base(x, y, 3);
    return static_cast<int>(std::lround((base(x, y, s) * alpha + 255.0 * (255 - alpha)) / 255));
  };
  const auto multiplied = [&](int x, int y, int s) { return s == 3 ? 200 : base(x, y, s) * 200 / 255; };
  const auto multipliedOnWhite = [&](int x, int y, int s) { return multiplied(x, y, s) + 55; };
  const auto printed = [&](int x, int y, int s) { return (255 - base(x, y, s)) * (255 - base(x, y, 3)) / 255; };
  const auto flat = [](int, int, int s) { return s == 0 ? 200 : 70 * s - 40; };
  const auto twelve = [&](int x, int y, int s) { return base(x, y, s) * 4095 / 255; };
  const auto five = [&](int x, int y, int s) { return base(x, y, s) >> 3; };
  const auto fiveSeen = [&](int x, int y, int s) { return static_cast<int>(std::lround(255.0 * five(x, y, s) / 31)); };
  const auto bit = [&](int x, int y, int s) { return base(x, y, s) & 1; };
  const auto bitOnWhite = [&](int x, int y, int s) { return bit(x, y, 3) ? 255 * bit(x, y, s) : 255; };
  const struct {
    Kind kind;
    std::function<int(int, int, int)> stored, seen;
    int tolerance = 0;
  } cases[] = {
      {{"together", 8, 1, COMPRESSION_LZW, PHOTOMETRIC_RGB, "wb", false, 3}, base, base},
      {{"apart", 8, 1, COMPRESSION_LZW, PHOTOMETRIC_RGB, "wb", false, 3, true}, base, base},
      {{"apart, tiled", 8, 1, COMPRESSION_LZW, PHOTOMETRIC_RGB, "wb", true, 3, true}, base, base},
      {{"16 bits", 16, 1, COMPRESSION_LZW, PHOTOMETRIC_RGB, "wb", false, 3}, deep, base},
      {{"12 bits, apart, tiled", 12, 1, COMPRESSION_LZW, PHOTOMETRIC_RGB, "wb", true, 3, true}, twelve, base, 1},
      {{"5 bits", 5, 0, COMPRESSION_NONE, PHOTOMETRIC_RGB, "wl", false, 3}, five, fiveSeen},
      {{"1 bit, alpha", 1, 0, 1, PHOTOMETRIC_RGB, "wl", false, 4, false, EXTRASAMPLE_UNASSALPHA}, bit, bitOnWhite},
      {{"alpha", 8, 1, 1, PHOTOMETRIC_RGB, "wl", false, 4, false, EXTRASAMPLE_UNASSALPHA}, base, onWhite},
      {{"multiplied", 8, 1, 1, PHOTOMETRIC_RGB, "wl", false, 4, false, EXTRASAMPLE_ASSOCALPHA},
       multiplied,
       multipliedOnWhite},
      {{"four inks", 8, 1, COMPRESSION_LZW, PHOTOMETRIC_SEPARATED, "wb", false, 4}, base, printed, 1},
      {{"JPEG", 8, 1, COMPRESSION_JPEG, PHOTOMETRIC_YCBCR, "wl", true, 3}, flat, flat, 3},
  };
  for (const auto& [kind, stored, seen, tolerance] : cases) {
    SCOPED_TRACE(kind.name);
    const auto colors = ColorsOf(ReadPicture(WriteTiff(kind, stored)));
    ASSERT_EQ(colors.size(), std::size_t{kWidth * kHeight});
    for (int i = 0; i < kWidth * kHeight; ++i) {
      const int x = i % kWidth, y = i / kWidth;
      ExpectNear(colors[static_cast<std::size_t>(i)], RGB(seen(x, y, 0), seen(x, y, 1), seen(x, y, 2)), tolerance);
    }
  }
}

TEST(TiffReader, APaletteMayHoldHighBytesAlone) {
  std::uint16_t map[3][16] = {};
  for (int i = 0; i < 16; ++i) {
    map[0][i] = static_cast<std::uint16_t>(i * 0x1000);
    map[1][i] = static_cast<std::uint16_t>(0xFFFF - i * 257);
  }
  const Bytes file = WriteTiff(
      {"", 4, 0, COMPRESSION_PACKBITS, PHOTOMETRIC_PALETTE}, [](int x, int y, int) { return (x + y) & 15; },
      [&](TIFF* tiff) { TIFFSetField(tiff, TIFFTAG_COLORMAP, map[0], map[1], map[2]); });
  const auto colors = ColorsOf(ReadPicture(file));
  for (int i = 0; i < 16; ++i) EXPECT_EQ(colors.at(static_cast<std::size_t>(i)), RGB(i * 16, 255 - i, 0));
}

TEST(TiffReader, OrientationIsApplied) {
  // Stored as rows 1 2 3 and 4 5 6 in the upper left corner; here is where each tag puts 1, 2 and 4.
  const struct {
    int tag, width, x1, y1, x2, y2, x4, y4;
  } cases[] = {{1, 37, 0, 0, 1, 0, 0, 1},       {2, 37, 36, 0, 35, 0, 36, 1}, {3, 37, 36, 28, 35, 28, 36, 27},
               {4, 37, 0, 28, 1, 28, 0, 27},    {5, 29, 0, 0, 0, 1, 1, 0},    {6, 29, 28, 0, 28, 1, 27, 0},
               {7, 29, 28, 36, 28, 35, 27, 36}, {8, 29, 0, 36, 0, 35, 1, 36}};
  for (const auto& c : cases)
    for (const int samples : {1, 3}) {
      SCOPED_TRACE(c.tag);
      const Kind kind{"", 8, 1, 1, samples == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB, "wl", false, samples};
      const Bytes file = WriteTiff(
          kind, [](int x, int y, int s) { return y == 0 && x < 2    ? x + 1
                                                 : y == 1 && x == 0 ? 4
                                                                    : 50 + 20 * s; },
          [&](TIFF* tiff) { TIFFSetField(tiff, TIFFTAG_ORIENTATION, c.tag); });
      const OpenedPicture opened = ReadTiff(std::span<const std::uint8_t>(file));
      ASSERT_TRUE(opened.picture);
      ASSERT_EQ(opened.picture->Width(), c.width);
      const auto pixels = opened.picture->RGBSurface();
      EXPECT_EQ(pixels.Pixel(c.x1, c.y1), 0x010101u);
      EXPECT_EQ(pixels.Pixel(c.x2, c.y2), 0x020202u);
      EXPECT_EQ(pixels.Pixel(c.x4, c.y4), 0x040404u);
    }
}

// The kept files: 12 x 6 pixels of (17 x + 3 y) mod 201, but 200 at (5, 0); see tools/make_odd_pictures.py.

int Count(int i) { return i == 5 ? 200 : (i % 12 * 17 + i / 12 * 3) % 201; }

TEST(OddFiles, OpenAsTheyShould) {
  Bytes plain, scaled, halvesScaled;
  std::vector<Color> colors;
  for (int i = 0; i < 72; ++i) {
    const int count = Count(i);
    plain.push_back(static_cast<std::uint8_t>(count));
    scaled.push_back(static_cast<std::uint8_t>((count * 255 + 100) / 200));
    halvesScaled.push_back(static_cast<std::uint8_t>((count / 2 * 255 + 50) / 100));
    colors.push_back(RGB(count, 255 - count, count / 2));
  }
  for (const char* name :
       {"counts-of-200-in-16-bits.tif", "big-endian-16-bits.tif", "signed-16-bits.tif", "signed-32-bits.tif",
        "unsigned-32-bits-no-sample-format.tif", "float.tif", "float-no-sample-format.tif", "double-big-endian.tif",
        "half-float.tif", "stray-colour-map-16-bits.tif", "packed-12-bits.tif", "counts-of-200-in-16-bits.png",
        "grey-alpha-16-bits.png"})
    EXPECT_EQ(LevelsOf(ReadPicture(OddFolder() / name)), scaled) << name;
  for (const char* name :
       {"big.tif", "lzw.tif", "deflate.tif", "packbits.tif", "tile-larger-than-image.tif", "palette-all-grey.tif",
        "directory-follows-itself.tif", "strip-count-too-large.tif", "strip-count-missing.tif", "gamma-of-1.png",
        "runs.bmp", "netpbm-os2.bmp", "grey.gif", "netpbm-interlaced.gif", "grey.pict", "no-preamble.pict"})
    EXPECT_EQ(LevelsOf(ReadPicture(OddFolder() / name)), plain) << name;
  // Its first bytes are those of a PNG; told to read a PICT, the reader must not be led astray.
  EXPECT_EQ(LevelsOf(ReadPict(FileContent(OddFolder() / "png-in-the-preamble.pict"))), plain);

  const auto pixel = [](const char* name, int x, int y) {
    const auto picture = ReadPicture(OddFolder() / name).picture;
    return picture ? picture->RGBSurface().Pixel(x, y) : kBlack;
  };
  for (const char* name : {"palette.tif", "palette-of-8-bit-components.tif", "rgb.tif", "rgb-in-separate-planes.tif",
                           "rgb-and-a-sample-that-is-no-alpha.tif", "libtiff-rgb-no-photometric.tif", "top-down.bmp",
                           "header-of-52-bytes.bmp", "header-of-56-bytes-alpha-all-0.bmp", "masks-of-10-bits.bmp"})
    EXPECT_EQ(ColorsOf(ReadPicture(OddFolder() / name)), colors) << name;
  EXPECT_EQ(LevelsOf(ReadPicture(OddFolder() / "signed-8-bits.tif")), halvesScaled);
  Bytes full = plain;
  full[5] = 255;
  EXPECT_EQ(LevelsOf(ReadPicture(OddFolder() / "graphicsmagick-float-24-bits.tif")), full);
  EXPECT_EQ(pixel("imagemagick-palette-alpha.tif", 0, 0), RGB(127, 255, 127)) << "green with an alpha of 128";
  EXPECT_EQ(pixel("imagemagick-5-6-5.bmp", 0, 0), RGB(0, 255, 0));
  EXPECT_EQ(pixel("white-of-15-bits.bmp", 11, 5), kWhite);
  EXPECT_EQ(pixel("os2-of-3-colours.bmp", 1, 0), RGB(200, 100, 50));
  EXPECT_EQ(pixel("palette.bmp", 3, 5), RGB(51, 204, 25)) << "stored from the bottom up";
  const auto beside = ReadPicture(OddFolder() / "past-its-screen.gif").picture;
  ASSERT_TRUE(beside && beside->Width() == 10 && beside->Height() == 7);
  EXPECT_EQ(beside->RGBSurface().Pixel(0, 0), RGB(99, 156, 49)) << "the background";
  EXPECT_EQ(beside->RGBSurface().Pixel(9, 6), colors[4 * 12 + 6]) << "the frame, cut to the screen";
  EXPECT_EQ(pixel("transparent-200.gif", 5, 0), kWhite);
  EXPECT_EQ(pixel("transparent-grey.png", 5, 0), kWhite);
  Bytes columnOfWhite = scaled;  // samples of both bytes, the second column transparent
  for (std::size_t i = 1; i < 72; i += 12) columnOfWhite[i] = 255;
  EXPECT_EQ(LevelsOf(ReadPicture(OddFolder() / "transparent-column-16-bits.png")), columnOfWhite);
  EXPECT_EQ(pixel("grey-alpha.tif", 1, 0), RGB(33, 33, 33)) << "17 with an alpha of 238";
  const Bytes strange = LevelsOf(ReadPicture(OddFolder() / "float-with-nan-and-infinity.tif"));
  EXPECT_EQ(Bytes(strange.begin(), strange.begin() + 4), (Bytes{0, 255, 0, 65}));
  const Bytes skipping = LevelsOf(ReadPicture(OddFolder() / "runs-that-skip-pixels.bmp"));
  ASSERT_EQ(skipping.size(), 72u);
  EXPECT_EQ(Bytes(skipping.end() - 12, skipping.end()), (Bytes{100, 100, 100, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Bytes(skipping.begin() + 48, skipping.begin() + 60), (Bytes{0, 0, 0, 0, 0, 200, 200, 200, 200, 0, 0, 0}));
  const Bytes nibbles = LevelsOf(ReadPicture(OddFolder() / "runs-of-4-bits.bmp"));
  ASSERT_EQ(nibbles.size(), 72u);
  const Bytes last(nibbles.end() - 12, nibbles.end()), lastButOne(nibbles.end() - 24, nibbles.end() - 12);
  EXPECT_EQ(last, (Bytes{17, 34, 17, 34, 17, 51, 68, 85, 102, 119, 119, 119}));
  EXPECT_EQ(lastButOne, (Bytes{153, 170, 187, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  const auto turned = ReadPicture(OddFolder() / "turned-right.jpg").picture;
  ASSERT_EQ(turned->Height(), 16);
  EXPECT_NEAR(turned->GreyLevels()[0], 40, 2);
  EXPECT_NEAR(turned->GreyLevels()[127], 200, 2);
}

TEST(OddFiles, AreRefusedForTheRightReason) {
  const std::pair<const char*, const char*> cases[] = {
      {"lies-60000-x-60000.tif", "unsupported size: 60000 x 60000"},
      {"lies-30000-x-30000-deflate.tif", "truncated"},
      {"lies-30000-x-30000-lzma.tif", "truncated"},
      {"lies-30000-x-30000.png", "truncated"},
      {"lies-16000-x-16000.gif", "truncated: 35 bytes cannot hold 16000 x 16000"},
      {"lies-strip-past-end.tif", "truncated"},
      {"lies-strip-of-no-rows.tif", "truncated"},
      {"lies-tile-of-a-gigapixel.tif", "unsupported size"},
      {"lies-65535-samples.tif", "truncated"},
      {"compression-unknown.tif", "unsupported compression: 4242"},
      {"lossless-jpeg-in.tif", "unsupported: Unsupported JPEG process"},
      {"lossless.jpg", "unsupported: JPEG process 3 of 8 bits"},
      {"12-bits.jpg", "unsupported: JPEG process 1 of 12 bits"},
      {"complex-numbers.tif", "unsupported depth: 64 bits, complex numbers"},
      {"rgb-float.tif", "unsupported depth: colours of 32 bits, floating point"},
      {"no-end-chunk.png", "truncated"},
      {"no-end-marker.jpg", "truncated"},
      {"runs-without-end.bmp", "truncated"},
      {"text-that-begins-with-BM.txt", "not an image"},
      {"empty.tif", "not an image"},
      {"not-there.tif", "cannot be read: No such file"},
      {".", "not an image: no regular file"},
  };
  for (const auto& [name, failure] : cases) {
    const OpenedPicture opened = ReadPicture(OddFolder() / name);
    EXPECT_FALSE(opened.picture) << name;
    EXPECT_TRUE(opened.failure.Utf8().starts_with(failure)) << name << ": " << opened.failure.Utf8();
  }
  // Opening a pipe must not wait for somebody to write into it.
  const auto pipe = std::filesystem::temp_directory_path() / ("pipe-" + std::to_string(getpid()));
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(ReadPicture(pipe).failure, String("not an image: no regular file"));
  std::filesystem::remove(pipe);
}

TEST(OddFiles, CutShortAtAnyByteGiveNothingOrTheWholePictureAndNoWord) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  for (const auto& entry : std::filesystem::directory_iterator(OddFolder())) {
    const std::string name = entry.path().filename().string();
    const Bytes whole = FileContent(entry.path());
    const OpenedPicture opened = ReadPicture(whole);
    if (!opened.picture) continue;
    const auto pixels = ColorsOf(opened);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const OpenedPicture cut = ReadPicture(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
      if (cut.picture) {
        EXPECT_EQ(ColorsOf(cut), pixels) << name << " at " << size;
      } else {
        const std::string failure = cut.failure.Utf8();
        EXPECT_TRUE(failure.starts_with("truncated") || (size < 526 && failure.starts_with("not an image")))
            << name << " at " << size << ": " << failure;
      }
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

/// Bytes that this process has read from files.
std::int64_t BytesRead() {
  std::ifstream file("/proc/self/io");
  std::string word;
  std::int64_t count = 0;
  file >> word >> count;  // the first line is "rchar: "
  return count;
}

TEST(OddFiles, AreReadNoFurtherThanTheFirstImage) {
  const Folder folder;
  const auto copy = folder.Path() / "copy";
  for (const auto& entry : std::filesystem::directory_iterator(OddFolder())) {
    if (!ReadPicture(entry.path()).picture || entry.path().extension() == ".pict") continue;
    std::filesystem::copy_file(entry.path(), copy, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(copy, std::uintmax_t{2} << 30);
    const std::int64_t before = BytesRead();
    EXPECT_EQ(ColorsOf(ReadPicture(copy)), ColorsOf(ReadPicture(entry.path()))) << entry.path();
    EXPECT_LT(BytesRead() - before, 1 << 20) << entry.path();
  }
}

TEST(OddFiles, ShortenedWhileTheyAreReadAreTruncated) {
  const Folder folder;
  const auto copy = folder.Path() / "copy";
  for (const auto& entry : std::filesystem::directory_iterator(OddFolder())) {
    if (!ReadPicture(entry.path()).picture) continue;
    std::filesystem::copy_file(entry.path(), copy, std::filesystem::copy_options::overwrite_existing);
    ByteSource source(copy);
    std::filesystem::resize_file(copy, 40);  // behind the signatures
    const std::string failure = ReadPicture(std::move(source)).failure.Utf8();
    EXPECT_TRUE(failure.starts_with("truncated") || entry.path().extension() == ".pict")
        << entry.path() << ": " << failure;
  }
}

template <class Sample>
Bytes Scale(std::vector<Sample> samples) {
  return ScaledToLevels(std::span<const Sample>(samples));
}

TEST(GreyScaling, RangesAtTheEdges) {
  EXPECT_EQ(Scale<std::uint16_t>({0, 1, 2, 255, 510}), (Bytes{0, 1, 1, 128, 255}));  // 0.5, 1, 127.5: halves go up
  EXPECT_EQ(Scale<std::uint16_t>({7, 7}), (Bytes{255, 255}));
  EXPECT_EQ(Scale<std::uint32_t>({0, 0}), (Bytes{0, 0}));
  EXPECT_EQ(Scale<std::int16_t>({-32768, 0, 32767}), (Bytes{0, 128, 255}));
  EXPECT_EQ(Scale<std::int32_t>({-10, -5}), (Bytes{0, 255}));
  EXPECT_EQ(Scale<std::uint32_t>({0, 0x80000000u, 0xFFFFFFFFu}), (Bytes{0, 128, 255}));
  // 255 v / (2^32 - 1) is just below and just above 0.5.
  EXPECT_EQ(Scale<std::uint32_t>({8421504u, 8421505u, 0xFFFFFFFFu}), (Bytes{0, 1, 255}));
  constexpr double kLargest = std::numeric_limits<double>::max();
  constexpr double kTiny = std::numeric_limits<double>::denorm_min();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(Scale<double>({-kLargest, 0, kLargest}), (Bytes{0, 128, 255}));
  EXPECT_EQ(Scale<double>({0, kTiny, 2 * kTiny}), (Bytes{0, 128, 255}));
  EXPECT_EQ(Scale<double>({kNan, -4, 6}), (Bytes{0, 0, 255}));
  EXPECT_EQ(Scale<double>({kNan, kNan}), (Bytes{0, 0}));
  EXPECT_EQ(Scale<float>({}), Bytes{});
  EXPECT_EQ(Scale<std::int8_t>({-128, -1, 0, 127}), (Bytes{0, 127, 128, 255}));
}

/// The levels of the values of a plane in which each of them occurs so many times. The order must not matter.
template <class Sample>
Bytes LevelsOfValues(const std::vector<std::pair<Sample, int>>& values) {
  std::vector<Sample> samples;
  for (const auto& [value, count] : values) samples.insert(samples.end(), static_cast<std::size_t>(count), value);
  Bytes levels = Scale(samples);
  std::ranges::reverse(samples);
  Bytes reversed = Scale(samples);
  std::ranges::reverse(reversed);
  EXPECT_EQ(reversed, levels);
  Bytes ofValues;
  std::size_t end = 0;
  for (const auto& value : values) ofValues.push_back(levels[(end += static_cast<std::size_t>(value.second)) - 1]);
  return ofValues;
}

template <class Sample>
void ExpectHotPixelsLimited() {
  using Values = std::vector<std::pair<Sample, int>>;
  // The 99.9th percentile by nearest rank: of 1000 the 999th, of 999 the 999th, of 1001 the 1000th.
  EXPECT_EQ(LevelsOfValues(Values{{10, 998}, {20, 1}, {100, 1}}), (Bytes{64, 128, 255}));  // up to 2 * 20
  EXPECT_EQ(LevelsOfValues(Values{{10, 997}, {20, 1}, {100, 1}}), (Bytes{26, 51, 255}));
  EXPECT_EQ(LevelsOfValues(Values{{10, 999}, {20, 1}, {100, 1}}), (Bytes{64, 128, 255}));
  EXPECT_EQ(LevelsOfValues(Values{{10, 998}, {100, 2}}), (Bytes{26, 255}));
  EXPECT_EQ(LevelsOfValues(Values{{30, 998}, {40, 1}, {80, 1}}), (Bytes{96, 128, 255})) << "exactly twice as far";
  EXPECT_EQ(LevelsOfValues(Values{{0, 999}, {7, 1}}), (Bytes{0, 255})) << "the percentile is at the lower end";
  if constexpr (std::numeric_limits<Sample>::is_signed) {
    EXPECT_EQ(LevelsOfValues(Values{{-100, 998}, {-80, 1}, {100, 1}}), (Bytes{0, 128, 255}));
  }
}

TEST(GreyScaling, AFewHotPixelsDoNotMakeAMapBlack) {
  ExpectHotPixelsLimited<std::int8_t>();
  ExpectHotPixelsLimited<std::uint16_t>();
  ExpectHotPixelsLimited<std::int16_t>();
  ExpectHotPixelsLimited<std::uint32_t>();
  ExpectHotPixelsLimited<std::int64_t>();
  ExpectHotPixelsLimited<float>();
  ExpectHotPixelsLimited<double>();
  constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(LevelsOfValues<float>({{kNan, 500}, {10, 498}, {20, 1}, {100, 1}}), (Bytes{0, 64, 128, 255}));
  EXPECT_EQ(LevelsOfValues<float>({{10, 997}, {20, 1}, {kInfinity, 2}}), (Bytes{128, 255, 255}));
  EXPECT_EQ(LevelsOfValues<double>({{-1e308, 998}, {-8e307, 1}, {1.7e308, 1}}), (Bytes{0, 128, 255}));
  // 1 to 5000 and one that is far off: the percentile is 4996.
  std::vector<std::pair<std::uint32_t, int>> values;
  for (std::uint32_t value = 1; value <= 5000; ++value) values.emplace_back(value, 1);
  values.emplace_back(4000000000u, 1);
  const Bytes levels = LevelsOfValues(values);
  EXPECT_EQ(levels[2497], 64);
  EXPECT_EQ(levels[4995], 128);
}

}  // namespace
}  // namespace platform
