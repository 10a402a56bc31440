#include <tiffio.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

/// The file as libtiff reads it, and libtiff's first error.
struct Source {
  ByteSource& bytes;
  toff_t position = 0;
  bool pastEnd = false;           // libtiff asked for bytes that the file does not have
  bool paletteLost = false;       // libtiff could not read the colour map and continued without it
  bool pixelsLost = false;        // libjpeg continued with invented pixels
  std::array<char, 256> error{};  // its first error
};

Source& SourceOf(thandle_t handle) { return *static_cast<Source*>(handle); }

tmsize_t ReadBytes(thandle_t handle, void* target, tmsize_t wanted) {
  Source& source = SourceOf(handle);
  const std::size_t count =
      source.bytes.Read(source.position, target, static_cast<std::size_t>(std::max<tmsize_t>(wanted, 0)));
  if (static_cast<tmsize_t>(count) < wanted) source.pastEnd = true;
  source.position += count;
  return static_cast<tmsize_t>(count);
}

tmsize_t WriteBytes(thandle_t, void*, tmsize_t) { return 0; }

toff_t Seek(thandle_t handle, toff_t offset, int whence) {
  Source& source = SourceOf(handle);
  const toff_t base = whence == SEEK_CUR ? source.position : whence == SEEK_END ? source.bytes.Size() : 0;
  return source.position = base + offset;
}

int Close(thandle_t) { return 0; }
toff_t Size(thandle_t handle) { return SourceOf(handle).bytes.Size(); }

int KeepError(TIFF*, void* handle, const char*, const char* format, va_list arguments) {
  Source& source = SourceOf(handle);
  if (source.error[0] == 0) std::vsnprintf(source.error.data(), source.error.size(), format, arguments);
  return 1;
}

int KeepLosses(TIFF*, void* handle, const char*, const char* format, va_list arguments) {
  std::array<char, 256> warning{};
  std::vsnprintf(warning.data(), warning.size(), format, arguments);
  Source& source = SourceOf(handle);
  if (std::strstr(warning.data(), "\"ColorMap\"")) source.paletteLost = true;
  if (MeansMissingPixels(warning.data())) source.error = warning, source.pixelsLost = true;
  return 1;
}

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

[[noreturn]] void GiveUp(const Source& source) {
  const std::string_view error = source.error.data();
  const std::string what = error.empty() ? "the data end too early" : std::string(error);
  if (source.pastEnd) throw ReadFailure("truncated: " + what);
  for (const std::string_view phrase :
       {"not support", "nsupported", "annot handle", "an not handle", "Sorry", "not configured"})
    if (error.find(phrase) != std::string_view::npos) throw ReadFailure("unsupported: " + what);
  throw ReadFailure("truncated or damaged: " + what);
}

/// libtiff gets no mapping functions: so uncompressed strips are copied only once, and ReadBytes notices every attempt
/// to read past the end.
Tiff Open(Source& source) {
  // Some old parts of the library report errors without a handle, to the global handlers: discard those.
  static std::once_flag silenced;
  std::call_once(silenced, [] {
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
  });
  const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(),
                                                                                 TIFFOpenOptionsFree);
  if (!options) throw std::bad_alloc();
  TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), tmsize_t{8} * kMaximumPixels);
  TIFFOpenOptionsSetErrorHandlerExtR(options.get(), KeepError, &source);
  TIFFOpenOptionsSetWarningHandlerExtR(options.get(), KeepLosses, &source);
  Tiff tiff(TIFFClientOpenExt("TIFF", "rm", &source, ReadBytes, WriteBytes, Seek, Close, Size, nullptr, nullptr,
                              options.get()),
            TIFFClose);
  if (!tiff) GiveUp(source);
  return tiff;
}

/// The tags that decide how the image is decoded.
struct Layout {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  bool tiled = false;
  std::uint32_t tileWidth = 0;
  std::uint32_t tileHeight = 0;
  std::uint16_t bits = 1;
  std::uint16_t samples = 1;
  std::uint16_t format = 0;  // 0 if the file does not state it
  std::uint16_t compression = COMPRESSION_NONE;
  std::uint16_t photometric = 0;
  std::uint16_t orientation = ORIENTATION_TOPLEFT;
  bool separate = false;
  std::uint16_t extraCount = 0;
  const std::uint16_t* extras = nullptr;

  /// The index of the alpha sample, or -1.
  int AlphaSample() const {
    for (int i = 0; i < extraCount; ++i)
      if (extras[i] == EXTRASAMPLE_ASSOCALPHA || extras[i] == EXTRASAMPLE_UNASSALPHA) return samples - extraCount + i;
    return -1;
  }
  bool AlphaPremultiplied() const { return extras[AlphaSample() - (samples - extraCount)] == EXTRASAMPLE_ASSOCALPHA; }
};

/// If the file does not state what its samples mean, three or more are RGB. libtiff treats such an image as grey, with
/// all samples but one counted as extra samples after those that the file declares; this corrects it.
void GuessPhotometric(TIFF* tiff, Layout& layout) {
  const bool fax = layout.compression >= COMPRESSION_CCITTRLE && layout.compression <= COMPRESSION_CCITTFAX4;
  layout.photometric = layout.samples >= 3 ? PHOTOMETRIC_RGB : fax ? PHOTOMETRIC_MINISWHITE : PHOTOMETRIC_MINISBLACK;
  if (layout.samples < 3) return;
  std::uint16_t count = 0;
  const std::uint16_t* kinds = nullptr;
  TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &count, &kinds);
  const std::vector<std::uint16_t> extras(kinds, kinds + std::min<int>(count, layout.samples - 3));
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, layout.photometric);
  TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, static_cast<int>(extras.size()), extras.data());
}

Layout LayoutOf(TIFF* tiff) {
  Layout layout;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &layout.width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &layout.height);
  layout.tiled = TIFFIsTiled(tiff) != 0;
  TIFFGetField(tiff, TIFFTAG_TILEWIDTH, &layout.tileWidth);
  TIFFGetField(tiff, TIFFTAG_TILELENGTH, &layout.tileHeight);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &layout.bits);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &layout.samples);
  TIFFGetField(tiff, TIFFTAG_SAMPLEFORMAT, &layout.format);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &layout.compression);
  TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &layout.orientation);
  std::uint16_t planar = PLANARCONFIG_CONTIG;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &planar);
  layout.separate = planar == PLANARCONFIG_SEPARATE && layout.samples > 1;
  if (!TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &layout.photometric)) GuessPhotometric(tiff, layout);
  TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &layout.extraCount, &layout.extras);
  layout.extraCount = std::min(layout.extraCount, layout.samples);
  return layout;
}

/// Throws ReadFailure, before anything large is allocated, for images that cannot be read.
void Check(TIFF* tiff, const Source& source, const Layout& layout) {
  const double bytesPerPixel = layout.bits / 8.0 * layout.samples;
  CheckSize(layout.width, layout.height, std::max(bytesPerPixel, 4.0));
  if (!TIFFIsCODECConfigured(layout.compression)) {
    const TIFFCodec* codec = TIFFFindCODEC(layout.compression);
    throw ReadFailure("unsupported compression: " + (codec ? codec->name : std::to_string(layout.compression)));
  }
  // Uncompressed YCbCr may store its colour once for up to 16 pixels. Compression reaches 65536 pixels per byte at the
  // very best, for a blank fax page.
  if (layout.compression == COMPRESSION_NONE)
    CheckPlausible(layout.width, layout.height, source.bytes.Size(),
                   (layout.photometric == PHOTOMETRIC_YCBCR ? 4 : 1) / bytesPerPixel);
  else
    CheckPlausible(layout.width, layout.height, source.bytes.Size(), 65536 / bytesPerPixel);
  if (layout.tiled) CheckSize(layout.tileWidth, layout.tileHeight, bytesPerPixel);
  // A compressed strip or a tile extends past the end of the file: some codecs would invent the rest.
  const std::uint32_t chunks = layout.tiled ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
  for (std::uint32_t i = 0; i < chunks && (layout.tiled || layout.compression != COMPRESSION_NONE); ++i) {
    const std::uint64_t offset = TIFFGetStrileOffset(tiff, i);
    const std::uint64_t count = TIFFGetStrileByteCount(tiff, i);
    if (offset > source.bytes.Size() || count > source.bytes.Size() - offset)
      throw ReadFailure("truncated: the data of the image go past the end of the file");
  }
}

/// The value of a number of `bits` bits; for a signed type the highest bit is the sign.
template <class Sample>
Sample FromBits(std::uint64_t value, std::size_t bits) {
  if constexpr (std::is_signed_v<Sample>) {
    const std::uint64_t sign = std::uint64_t{1} << (bits - 1);
    return static_cast<Sample>(static_cast<std::int64_t>((value ^ sign) - sign));
  } else {
    return static_cast<Sample>(value);
  }
}

/// Extracts sample number `first` of every pixel of a row. libtiff has put words of 16, 24, 32 and 64 bits into the
/// machine's byte order; other widths are packed, highest bit first.
template <class Sample>
void TakeSamples(const std::uint8_t* row, std::uint32_t count, int first, const Layout& layout, Sample* out) {
  const std::size_t stride = layout.separate ? 1 : layout.samples;
  const std::size_t bits = layout.bits;
  if (bits == 8 * sizeof(Sample)) {
    row += static_cast<std::size_t>(first) * sizeof(Sample);
    for (std::uint32_t x = 0; x < count; ++x, row += stride * sizeof(Sample)) std::memcpy(out + x, row, sizeof(Sample));
  } else if (bits == 24) {
    row += static_cast<std::size_t>(first) * 3;
    for (std::uint32_t x = 0; x < count; ++x, row += stride * 3) {
      const bool little = std::endian::native == std::endian::little;
      out[x] = FromBits<Sample>(static_cast<std::uint64_t>(little ? row[0] | row[1] << 8 | row[2] << 16
                                                                  : row[2] | row[1] << 8 | row[0] << 16),
                                bits);
    }
  } else {
    std::size_t place = static_cast<std::size_t>(first) * bits;
    for (std::uint32_t x = 0; x < count; ++x, place += stride * bits) {
      const std::size_t last = (place + bits - 1) / 8;
      std::uint64_t window = 0;
      for (std::size_t i = place / 8; i <= last; ++i) window = (window << 8) | row[i];
      window >>= 7 - (place + bits - 1) % 8;
      out[x] = FromBits<Sample>(window & ((std::uint64_t{1} << bits) - 1), bits);
    }
  }
}

template <class Sample>
std::vector<Sample> ReadStrips(TIFF* tiff, const Source& source, const Layout& layout, int sample) {
  std::uint32_t stripRows = 0;
  TIFFGetFieldDefaulted(tiff, TIFFTAG_ROWSPERSTRIP, &stripRows);
  if (stripRows == 0) throw ReadFailure("truncated or damaged: strips without rows");
  stripRows = std::min(stripRows, layout.height);
  // Strips that hold only this sample are decoded straight into the plane. The plane grows strip by strip, so that a
  // strip is still in the cache when it is processed and a wrong size in the header costs no memory.
  const bool direct = layout.bits == 8 * sizeof(Sample) && (layout.samples == 1 || layout.separate);
  const std::uint16_t plane = layout.separate ? static_cast<std::uint16_t>(sample) : 0;
  const int first = layout.separate ? 0 : sample;
  const auto rowBytes = static_cast<std::size_t>(TIFFScanlineSize64(tiff));
  std::vector<Sample> samples;
  samples.reserve(static_cast<std::size_t>(layout.width) * layout.height);
  std::unique_ptr<std::uint8_t[]> buffer;
  if (!direct) buffer = std::make_unique_for_overwrite<std::uint8_t[]>(rowBytes * stripRows);
  for (std::uint32_t y = 0; y < layout.height; y += stripRows) {
    const std::uint32_t rows = std::min(stripRows, layout.height - y);
    const std::size_t before = samples.size();
    samples.resize(before + static_cast<std::size_t>(layout.width) * rows);
    void* target = direct ? static_cast<void*>(samples.data() + before) : buffer.get();
    const auto bytes = static_cast<tmsize_t>(rowBytes * rows);
    if (TIFFReadEncodedStrip(tiff, TIFFComputeStrip(tiff, y, plane), target, bytes) != bytes) GiveUp(source);
    for (std::uint32_t row = 0; row < rows && !direct; ++row)
      TakeSamples(buffer.get() + row * rowBytes, layout.width, first, layout,
                  samples.data() + before + static_cast<std::size_t>(row) * layout.width);
    if (y > layout.height - rows) break;
  }
  return samples;
}

template <class Sample>
std::vector<Sample> ReadTiles(TIFF* tiff, const Source& source, const Layout& layout, int sample) {
  const std::uint16_t plane = layout.separate ? static_cast<std::uint16_t>(sample) : 0;
  const int first = layout.separate ? 0 : sample;
  const auto rowBytes = static_cast<std::size_t>(TIFFTileRowSize64(tiff));
  const auto tileBytes = static_cast<tmsize_t>(TIFFTileSize64(tiff));
  if (rowBytes == 0 || tileBytes < static_cast<tmsize_t>(rowBytes * layout.tileHeight)) GiveUp(source);
  const auto buffer = std::make_unique_for_overwrite<std::uint8_t[]>(static_cast<std::size_t>(tileBytes));
  std::vector<Sample> samples(static_cast<std::size_t>(layout.width) * layout.height);
  for (std::uint64_t top = 0; top < layout.height; top += layout.tileHeight)
    for (std::uint64_t left = 0; left < layout.width; left += layout.tileWidth) {
      const auto x = static_cast<std::uint32_t>(left);
      const auto y = static_cast<std::uint32_t>(top);
      const std::uint32_t tile = TIFFComputeTile(tiff, x, y, 0, plane);
      if (TIFFReadEncodedTile(tiff, tile, buffer.get(), tileBytes) != tileBytes) GiveUp(source);
      const std::uint32_t columns = std::min(layout.tileWidth, layout.width - x);
      const std::uint32_t rows = std::min(layout.tileHeight, layout.height - y);
      for (std::uint32_t row = 0; row < rows; ++row)
        TakeSamples(buffer.get() + row * rowBytes, columns, first, layout,
                    samples.data() + static_cast<std::size_t>(y + row) * layout.width + x);
    }
  return samples;
}

template <class Sample>
std::vector<Sample> ReadPlane(TIFF* tiff, const Source& source, const Layout& layout, int sample) {
  return layout.tiled ? ReadTiles<Sample>(tiff, source, layout, sample)
                      : ReadStrips<Sample>(tiff, source, layout, sample);
}

/// Floating-point numbers of 16 or 24 bits: a sign, then the exponent, then the mantissa.
template <class Word>
std::vector<float> FromShortFloats(const std::vector<Word>& words, int exponentBits, int mantissaBits) {
  const int largest = (1 << exponentBits) - 1;
  const int bias = largest / 2;
  std::vector<float> values(words.size());
  std::transform(words.begin(), words.end(), values.begin(), [=](Word word) {
    const int exponent = static_cast<int>(word >> mantissaBits) & largest;
    const int mantissa = static_cast<int>(word) & ((1 << mantissaBits) - 1);
    const bool negative = (word >> (mantissaBits + exponentBits) & 1) != 0;
    float value = exponent == 0
                      ? std::ldexp(static_cast<float>(mantissa), 1 - bias - mantissaBits)
                      : std::ldexp(static_cast<float>(mantissa + (1 << mantissaBits)), exponent - bias - mantissaBits);
    if (exponent == largest)
      value = mantissa ? std::numeric_limits<float>::quiet_NaN() : std::numeric_limits<float>::infinity();
    return negative ? -value : value;
  });
  return values;
}

/// Some programs write floating-point maps without declaring the sample format. Read as whole numbers of 32 bits,
/// ordinary values from 2^-32 to 2^32 are all above 800 million, except 0: no map of counts looks like that.
template <class Float>
bool LooksLikeFloats(const std::vector<Float>& values) {
  bool any = false;
  for (const Float value : values) {
    if (value == 0) continue;
    if (!(std::abs(value) >= Float{0x1p-32} && std::abs(value) <= Float{0x1p32})) return false;
    any = true;
  }
  return any;
}

template <class Sample>
std::vector<std::uint8_t> Scaled(const std::vector<Sample>& samples) {
  return ScaledToLevels(std::span<const Sample>(samples));
}

/// The levels of a plane with samples of one of the three types.
template <class Unsigned, class Signed, class Float>
std::vector<std::uint8_t> ReadScaled(TIFF* tiff, const Source& source, const Layout& layout) {
  if (layout.format == SAMPLEFORMAT_INT) return Scaled(ReadPlane<Signed>(tiff, source, layout, 0));
  if (layout.format == SAMPLEFORMAT_IEEEFP) return Scaled(ReadPlane<Float>(tiff, source, layout, 0));
  if (layout.format == 0 && layout.bits == 8 * sizeof(Float)) {
    const auto values = ReadPlane<Float>(tiff, source, layout, 0);
    if (LooksLikeFloats(values)) return Scaled(values);
  }
  return Scaled(ReadPlane<Unsigned>(tiff, source, layout, 0));
}

std::vector<std::uint8_t> ReadScaledLevels(TIFF* tiff, const Source& source, const Layout& layout) {
  if (layout.bits > 32) return ReadScaled<std::uint64_t, std::int64_t, double>(tiff, source, layout);
  const bool isFloat = layout.format == SAMPLEFORMAT_IEEEFP;
  if (layout.bits == 24 && isFloat)
    return Scaled(FromShortFloats(ReadPlane<std::uint32_t>(tiff, source, layout, 0), 7, 16));
  if (layout.bits > 16) return ReadScaled<std::uint32_t, std::int32_t, float>(tiff, source, layout);
  if (layout.format == SAMPLEFORMAT_INT)
    return layout.bits > 8 ? Scaled(ReadPlane<std::int16_t>(tiff, source, layout, 0))
                           : Scaled(ReadPlane<std::int8_t>(tiff, source, layout, 0));
  const auto words = ReadPlane<std::uint16_t>(tiff, source, layout, 0);
  return isFloat ? Scaled(FromShortFloats(words, 5, 10)) : Scaled(words);
}

void CheckDepth(const Layout& layout) {
  const bool isFloat = layout.format == SAMPLEFORMAT_IEEEFP;
  const bool known = isFloat ? layout.bits == 16 || layout.bits == 24 || layout.bits == 32 || layout.bits == 64
                             : layout.bits >= 1 && (layout.bits <= 32 || layout.bits == 64);
  if (!known || layout.format > SAMPLEFORMAT_VOID)
    throw ReadFailure("unsupported depth: " + std::to_string(layout.bits) + " bits" +
                      (isFloat                             ? ", floating point"
                       : layout.format > SAMPLEFORMAT_VOID ? ", complex numbers"
                                                           : ""));
}

/// One sample of every pixel, of 1 to 16 bits, scaled so that its largest possible value is 255.
std::vector<std::uint8_t> ReadFullScale(TIFF* tiff, const Source& source, const Layout& layout, int sample) {
  const auto words = ReadPlane<std::uint16_t>(tiff, source, layout, sample);
  const std::uint32_t fullScale = (std::uint32_t{1} << layout.bits) - 1;
  std::vector<std::uint8_t> levels(words.size());
  std::transform(words.begin(), words.end(), levels.begin(), [fullScale](std::uint32_t word) {
    return static_cast<std::uint8_t>((word * 255 + fullScale / 2) / fullScale);
  });
  return levels;
}

std::vector<std::uint8_t> ReadAlpha(TIFF* tiff, const Source& source, const Layout& layout) {
  if (layout.bits > 16 || layout.format == SAMPLEFORMAT_IEEEFP)
    throw ReadFailure("unsupported depth: " + std::to_string(layout.bits) + " bits with alpha");
  return ReadFullScale(tiff, source, layout, layout.AlphaSample());
}

Ref<Picture> Upright(std::vector<std::uint8_t> levels, const Layout& layout) {
  const Orientation orientation(layout.orientation, static_cast<int>(layout.width), static_cast<int>(layout.height));
  if (!orientation.Upright()) {
    std::vector<std::uint8_t> upright(levels.size());
    orientation.Apply(levels.data(), upright.data());
    levels = std::move(upright);
  }
  return MakeRef<Picture>(orientation.Width(), orientation.Height(), std::move(levels));
}

Ref<Picture> Upright(const Ref<Picture>& stored, const Layout& layout) {
  const Orientation orientation(layout.orientation, static_cast<int>(layout.width), static_cast<int>(layout.height));
  if (orientation.Upright()) return stored;
  auto upright = MakeRef<Picture>(orientation.Width(), orientation.Height());
  orientation.Apply(stored->Pixels().data, upright->Pixels().data);
  return upright;
}

Ref<Picture> ReadGrey(TIFF* tiff, const Source& source, const Layout& layout) {
  CheckDepth(layout);
  const bool scaled = layout.bits > 8 || layout.format == SAMPLEFORMAT_INT;
  std::vector<std::uint8_t> levels =
      scaled ? ReadScaledLevels(tiff, source, layout) : ReadPlane<std::uint8_t>(tiff, source, layout, 0);
  std::array<std::uint8_t, 256> table = LevelsOfBits(scaled ? 8 : layout.bits);
  const bool minIsWhite = layout.photometric == PHOTOMETRIC_MINISWHITE;
  if (minIsWhite)
    for (std::uint8_t& level : table) level = static_cast<std::uint8_t>(255 - level);
  if ((!scaled && layout.bits < 8) || minIsWhite)
    std::transform(levels.begin(), levels.end(), levels.begin(), [&](std::uint8_t value) { return table[value]; });
  if (layout.AlphaSample() > 0) CompositeOnWhite(levels, ReadAlpha(tiff, source, layout), layout.AlphaPremultiplied());
  return Upright(std::move(levels), layout);
}

Ref<Picture> ReadPalette(TIFF* tiff, const Source& source, const Layout& layout) {
  std::uint16_t* red = nullptr;
  std::uint16_t* green = nullptr;
  std::uint16_t* blue = nullptr;
  if (!TIFFGetField(tiff, TIFFTAG_COLORMAP, &red, &green, &blue))
    throw ReadFailure("unsupported photometric: a palette without its colours");
  const std::size_t size = std::size_t{1} << layout.bits;
  // Components have 16 bits, but some programs write 8: detected by no component being larger.
  const auto small = [size](const std::uint16_t* values) {
    return std::all_of(values, values + size, [](std::uint16_t value) { return value < 256; });
  };
  const int shift = small(red) && small(green) && small(blue) ? 0 : 8;
  std::array<OpaqueColor, 256> palette;
  palette.fill(Opaque(kBlack));
  for (std::size_t i = 0; i < size; ++i) palette[i] = OpaqueRGB(red[i] >> shift, green[i] >> shift, blue[i] >> shift);
  const auto indices = ReadPlane<std::uint8_t>(tiff, source, layout, 0);
  const auto picture = MakeRef<Picture>(static_cast<int>(layout.width), static_cast<int>(layout.height));
  OpaqueColor* pixels = picture->Pixels().data;
  std::transform(indices.begin(), indices.end(), pixels, [&](std::uint8_t index) { return palette[index]; });
  if (layout.AlphaSample() > 0) {
    // A palette colour is shared by pixels of any alpha, so it is never premultiplied.
    const auto alpha = ReadAlpha(tiff, source, layout);
    std::transform(pixels, pixels + alpha.size(), alpha.begin(), pixels,
                   [](OpaqueColor color, int over) { return ColorOverWhite(color, over); });
  }
  return AsLevelsIfGrey(Upright(picture, layout));
}

/// RGB of a depth that libtiff does not convert.
Ref<Picture> ReadUnusualRgb(TIFF* tiff, const Source& source, const Layout& layout) {
  const auto picture = MakeRef<Picture>(static_cast<int>(layout.width), static_cast<int>(layout.height));
  OpaqueColor* pixels = picture->Pixels().data;
  std::fill_n(pixels, std::size_t{layout.width} * layout.height, Opaque(kBlack));
  const bool hasAlpha = layout.AlphaSample() > 0;
  const auto alpha = hasAlpha ? ReadAlpha(tiff, source, layout) : std::vector<std::uint8_t>();
  for (int sample = 0; sample < 3; ++sample) {
    std::vector<std::uint8_t> levels = ReadFullScale(tiff, source, layout, sample);
    if (hasAlpha) CompositeOnWhite(levels, alpha, layout.AlphaPremultiplied());
    std::transform(pixels, pixels + levels.size(), levels.begin(), pixels,
                   [shift = 16 - 8 * sample](OpaqueColor color, Color level) { return color | level << shift; });
  }
  return AsLevelsIfGrey(Upright(picture, layout));
}

/// A buffer of just one tile, if no tile is compressed: with a larger one, the conversion to RGB treats each tile as
/// damaged.
std::vector<std::uint8_t> SetTileBuffer(TIFF* tiff, const Layout& layout) {
  if (!layout.tiled || layout.compression != COMPRESSION_NONE) return {};
  const std::uint64_t size = TIFFTileSize64(tiff);
  for (std::uint32_t i = 0; i < TIFFNumberOfTiles(tiff); ++i)
    if (TIFFGetStrileByteCount(tiff, i) != size) throw ReadFailure("truncated or damaged: tiles of the wrong size");
  std::vector<std::uint8_t> buffer(size);
  TIFFReadBufferSetup(tiff, buffer.data(), static_cast<tmsize_t>(size));
  return buffer;
}

/// RGB, CMYK, YCbCr and rarer ones: libtiff converts them to 8-bit RGB; 16 bits become round(v / 257).
Ref<Picture> ReadColors(TIFF* tiff, const Source& source, const Layout& layout) {
  char message[1024] = "";
  TIFFRGBAImage image{};
  const bool logarithmic = layout.photometric == PHOTOMETRIC_LOGL || layout.photometric == PHOTOMETRIC_LOGLUV;
  if (!logarithmic && (layout.format == SAMPLEFORMAT_IEEEFP || layout.format == SAMPLEFORMAT_INT))
    throw ReadFailure("unsupported depth: colours of " + std::to_string(layout.bits) +
                      (layout.format == SAMPLEFORMAT_INT ? " signed bits" : " bits, floating point"));
  if (!TIFFRGBAImageOK(tiff, message) || !TIFFRGBAImageBegin(&image, tiff, 1, message))
    throw ReadFailure("unsupported photometric or depth: photometric " + std::to_string(layout.photometric) + ", " +
                      std::to_string(layout.bits) + " bits: " + message);
  const std::unique_ptr<TIFFRGBAImage, decltype(&TIFFRGBAImageEnd)> end(&image, TIFFRGBAImageEnd);
  const std::vector<std::uint8_t> tileBuffer = SetTileBuffer(tiff, layout);
  image.req_orientation = image.orientation;  // rows as they are stored; Upright rotates them
  const auto picture = MakeRef<Picture>(static_cast<int>(layout.width), static_cast<int>(layout.height));
  OpaqueColor* pixels = picture->Pixels().data;
  if (!TIFFRGBAImageGet(&image, pixels, layout.width, layout.height)) GiveUp(source);
  // libtiff has multiplied the colours by their alpha. It treats a fourth sample as alpha even if the file declares
  // something else.
  const bool declared = layout.extraCount > 0;
  const bool hasAlpha = image.alpha != 0 && (!declared || layout.AlphaSample() >= 0);
  std::transform(pixels, pixels + std::size_t{layout.width} * layout.height, pixels, [hasAlpha](std::uint32_t abgr) {
    const int white = hasAlpha ? 255 - static_cast<int>(TIFFGetA(abgr)) : 0;
    return OpaqueRGB(std::min<int>(static_cast<int>(TIFFGetR(abgr)) + white, 255),
                     std::min<int>(static_cast<int>(TIFFGetG(abgr)) + white, 255),
                     std::min<int>(static_cast<int>(TIFFGetB(abgr)) + white, 255));
  });
  return AsLevelsIfGrey(Upright(picture, layout));
}

Ref<Picture> ReadImage(TIFF* tiff, const Source& source, const Layout& layout) {
  switch (layout.photometric) {
    case PHOTOMETRIC_MINISWHITE:
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MASK:
      return ReadGrey(tiff, source, layout);
    case PHOTOMETRIC_PALETTE:
      // Deep maps sometimes have a stray colour map; their values are counts nevertheless.
      return layout.bits <= 8 ? ReadPalette(tiff, source, layout) : ReadGrey(tiff, source, layout);
    case PHOTOMETRIC_RGB:
      if (layout.samples - layout.extraCount < 3) return ReadGrey(tiff, source, layout);
      if (layout.bits < 16 && layout.bits != 8 && layout.format != SAMPLEFORMAT_INT)
        return ReadUnusualRgb(tiff, source, layout);
      return ReadColors(tiff, source, layout);
    default:
      return ReadColors(tiff, source, layout);
  }
}

}  // namespace

OpenedPicture ReadTiff(ByteSource&& bytes) {
  return Guarded([&bytes] {
    Source source{.bytes = bytes};
    const Tiff tiff = Open(source);
    const Layout layout = LayoutOf(tiff.get());
    Check(tiff.get(), source, layout);
    if (source.paletteLost && layout.bits <= 8) GiveUp(source);
    auto picture = ReadImage(tiff.get(), source, layout);
    if (source.pixelsLost) GiveUp(source);
    return picture;
  });
}

}  // namespace platform
