#include "platform/pictures/PNGu.h"

#include <libdeflate.h>
#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <memory>
#include <new>

namespace platform::PNGu {

namespace {

/// Bytes in uninitialised memory.
struct Bytes {
  explicit Bytes(std::size_t count) : data(std::make_unique_for_overwrite<png_byte[]>(count)), size(count) {}

  std::unique_ptr<png_byte[]> data;
  std::size_t size;
};

/// Colours as the file holds them: each row is a filter number and three bytes per pixel. No filter is used: maps shown
/// through a colour table have few colours and hard steps, so the differences that filters compute compress worse than
/// the colours.
Bytes FileRows(PlaneView<const OpaqueColor> pixels) {
  Bytes rows(static_cast<std::size_t>(pixels.height) * (static_cast<std::size_t>(pixels.width) * 3 + 1));
  png_byte* to = rows.data.get();
  for (int y = 0; y < pixels.height; ++y) {
    *to++ = PNG_FILTER_VALUE_NONE;
    const OpaqueColor* const row = pixels.Row(y);
    for (int x = 0; x < pixels.width; ++x, to += 3) {
      to[0] = static_cast<png_byte>(row[x] >> 16);
      to[1] = static_cast<png_byte>(row[x] >> 8);
      to[2] = static_cast<png_byte>(row[x]);
    }
  }
  return rows;
}

/// Compressed by libdeflate, not by zlib, which libpng would use: on maps it takes less than half the time, and the
/// file is a seventh smaller.
Bytes Compressed(const Bytes& rows) {
  struct Free {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
  };
  const std::unique_ptr<libdeflate_compressor, Free> compressor(libdeflate_alloc_compressor(1));
  if (!compressor) throw std::bad_alloc();
  Bytes data(libdeflate_zlib_compress_bound(compressor.get(), rows.size));
  data.size = libdeflate_zlib_compress(compressor.get(), rows.data.get(), rows.size, data.data.get(), data.size);
  return data;
}

void Fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }

void Ignore(png_structp, png_const_charp) {}

/// Writes the chunks of the compressed data and the one that ends the file.
void WriteData(png_structp png, const png_byte* data, std::size_t size) {
  constexpr std::size_t kChunk = 1 << 20;
  const auto write = [png](const char* type, const png_byte* bytes, std::size_t count) {
    png_write_chunk(png, reinterpret_cast<png_const_bytep>(type), bytes, count);
  };
  std::size_t done = 0;
  for (; size - done > kChunk; done += kChunk) write("IDAT", data + done, kChunk);
  write("IDAT", data + done, size - done);
  write("IEND", nullptr, 0);
}

/// No object with a destructor may live here or in WriteData: libpng leaves both by longjmp.
bool Write(std::FILE* file, int width, int height, const png_byte* data, std::size_t size) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_init_io(png, file);
  png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8, PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  WriteData(png, data, size);
  png_destroy_write_struct(&png, &info);
  return true;
}

NewFile::Outcome Save(const FolderItem& file, Picture& image, IfTaken taken) {
  const PlaneView<const OpaqueColor> pixels = image.Pixels();
  const Bytes data = Compressed(FileRows(pixels));
  NewFile written(file.Path(), taken);
  if (!written.Stream() || !Write(written.Stream(), pixels.width, pixels.height, data.data.get(), data.size))
    return NewFile::Outcome::Failed;
  return written.Finish();
}

}  // namespace

bool SavePicture(const Ref<FolderItem>& file, const Ref<Picture>& image, float /*gamma*/) {
  return Save(*file, *image, IfTaken::Replace) == NewFile::Outcome::Written;
}

NewFile::Outcome SaveNewPicture(const Ref<FolderItem>& file, const Ref<Picture>& image) {
  return Save(*file, *image, IfTaken::Keep);
}

}  // namespace platform::PNGu
