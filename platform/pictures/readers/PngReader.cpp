#include <png.h>

#include <array>
#include <bit>
#include <csetjmp>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/pictures/GreyScaling.h"
#include "platform/pictures/readers/ReaderTools.h"

namespace platform {

namespace {

/// The file as libpng reads it, and libpng's error.
struct Source {
  ByteSource& bytes;
  std::uint64_t position = 0;
  bool pastEnd = false;
  std::array<char, 160> error{};
};

void ReadBytes(png_structp png, png_bytep target, std::size_t count) {
  auto& source = *static_cast<Source*>(png_get_io_ptr(png));
  if (source.bytes.Read(source.position, target, count) != count) {
    source.pastEnd = true;
    png_error(png, "the data end too early");
  }
  source.position += count;
}

[[noreturn]] void KeepError(png_structp png, png_const_charp message) {
  auto& source = *static_cast<Source*>(png_get_error_ptr(png));
  std::snprintf(source.error.data(), source.error.size(), "%s", message);
  png_longjmp(png, 1);
}

void DropWarning(png_structp, png_const_charp) {}

/// One file being decoded. libpng reports errors by longjmp, so the steps passed to Run must not hold objects with
/// destructors.
class Decoder {
 public:
  explicit Decoder(ByteSource& bytes) : source_{.bytes = bytes} {
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &source_, KeepError, DropWarning);
    if (png_) info_ = png_create_info_struct(png_);
    if (!info_) {
      png_destroy_read_struct(&png_, &info_, nullptr);
      throw std::bad_alloc();
    }
    png_set_read_fn(png_, &source_, ReadBytes);
    png_set_user_limits(png_, 0x7FFFFFFF, 0x7FFFFFFF);  // CheckSize limits it
  }
  Decoder(const Decoder&) = delete;
  Decoder& operator=(const Decoder&) = delete;
  ~Decoder() { png_destroy_read_struct(&png_, &info_, nullptr); }

  template <class Step>
  void Run(Step step) {
    if (!Finishes(step))
      throw ReadFailure((source_.pastEnd ? "truncated: " : "truncated or damaged: ") +
                        std::string(source_.error.data()));
  }

 private:
  template <class Step>
  bool Finishes(Step& step) {
    if (setjmp(png_jmpbuf(png_))) return false;
    step(png_, info_);
    return true;
  }

  Source source_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

struct Header {
  int width = 0;
  int height = 0;
  int depth = 0;
  bool grey = false;  // by its colour type; a palette does not count
  int channels = 0;   // after expansion: grey, grey and alpha, RGB, RGB and alpha
  std::size_t Pixels() const { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }
};

Header ReadHeader(Decoder& decoder) {
  Header header;
  decoder.Run([&header](png_structp png, png_infop info) {
    png_read_info(png, info);
    header.width = static_cast<int>(png_get_image_width(png, info));
    header.height = static_cast<int>(png_get_image_height(png, info));
    header.depth = png_get_bit_depth(png, info);
    const int type = png_get_color_type(png, info);
    header.grey = (type & PNG_COLOR_MASK_COLOR) == 0;
    const bool hasAlpha = (type & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    header.channels = (header.grey ? 1 : 3) + hasAlpha;
  });
  return header;
}

/// The samples of all pixels, `channels` per pixel, of 8 bits or, if `Sample` is wider, of 16. Gamma and profiles are
/// not applied.
template <class Sample>
std::vector<Sample> ReadSamples(Decoder& decoder, const Header& header) {
  const std::size_t rowSamples = static_cast<std::size_t>(header.width) * static_cast<std::size_t>(header.channels);
  decoder.Run([](png_structp png, png_infop info) {
    png_set_expand(png);
    if (sizeof(Sample) == 1) png_set_scale_16(png);
    if (sizeof(Sample) == 2 && std::endian::native == std::endian::little) png_set_swap(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
  });
  std::vector<Sample> samples(rowSamples * static_cast<std::size_t>(header.height));
  std::vector<png_bytep> rows(static_cast<std::size_t>(header.height));
  for (std::size_t y = 0; y < rows.size(); ++y) rows[y] = reinterpret_cast<png_bytep>(samples.data() + y * rowSamples);
  decoder.Run([&](png_structp png, png_infop info) {
    if (png_get_rowbytes(png, info) != rowSamples * sizeof(Sample)) png_error(png, "rows of an unexpected size");
    png_read_image(png, rows.data());
    png_read_end(png, nullptr);
  });
  return samples;
}

/// Every `channels`-th sample, starting with number `first`.
template <class Sample>
std::vector<Sample> Channel(const std::vector<Sample>& samples, const Header& header, std::size_t first) {
  std::vector<Sample> channel(header.Pixels());
  for (std::size_t i = 0; i < channel.size(); ++i)
    channel[i] = samples[i * static_cast<std::size_t>(header.channels) + first];
  return channel;
}

std::vector<std::uint8_t> ReadGrey8(Decoder& decoder, const Header& header) {
  auto samples = ReadSamples<std::uint8_t>(decoder, header);
  if (header.channels == 1) return samples;
  auto levels = Channel(samples, header, 0);
  CompositeOnWhite(levels, Channel(samples, header, 1), false);
  return levels;
}

std::vector<std::uint8_t> ReadGrey16(Decoder& decoder, const Header& header) {
  const auto samples = ReadSamples<std::uint16_t>(decoder, header);
  if (header.channels == 1) return ScaledToLevels(std::span<const std::uint16_t>(samples));
  auto levels = ScaledToLevels(std::span<const std::uint16_t>(Channel(samples, header, 0)));
  std::vector<std::uint8_t> alpha(header.Pixels());
  for (std::size_t i = 0; i < alpha.size(); ++i) alpha[i] = static_cast<std::uint8_t>((samples[2 * i + 1] + 128) / 257);
  CompositeOnWhite(levels, alpha, false);
  return levels;
}

Ref<Picture> ReadColors(Decoder& decoder, const Header& header) {
  const auto samples = ReadSamples<std::uint8_t>(decoder, header);
  const auto picture = MakeRef<Picture>(header.width, header.height);
  OpaqueColor* pixels = picture->Pixels().data;
  const std::uint8_t* sample = samples.data();
  for (std::size_t i = 0; i < header.Pixels(); ++i, sample += header.channels) {
    const int alpha = header.channels == 4 ? sample[3] : 255;
    pixels[i] = OpaqueRGB(OverWhite(sample[0], alpha), OverWhite(sample[1], alpha), OverWhite(sample[2], alpha));
  }
  return AsLevelsIfGrey(picture);
}

}  // namespace

OpenedPicture ReadPng(ByteSource&& bytes) {
  return Guarded([&bytes] {
    const auto signature = bytes.Bytes(0, 8);
    if (png_sig_cmp(signature.data(), 0, signature.size()) != 0) throw ReadFailure("not an image: no PNG");
    Decoder decoder(bytes);
    const Header header = ReadHeader(decoder);
    CheckSize(header.width, header.height, 8);
    CheckPlausible(header.width, header.height, bytes.Size(), 16384);
    if (!header.grey) return ReadColors(decoder, header);
    return MakeRef<Picture>(header.width, header.height,
                            header.depth == 16 ? ReadGrey16(decoder, header) : ReadGrey8(decoder, header));
  });
}

}  // namespace platform
