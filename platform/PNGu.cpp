#include "platform/PNGu.h"

#include <fcntl.h>
#include <png.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <new>
#include <span>
#include <string>
#include <vector>

#include "platform/Parallel.h"

namespace platform::PNGu {

namespace {

namespace fs = std::filesystem;

/// Rows of the picture, compressed. The strips of a picture follow one another as one stream of compressed data.
struct Strip {
  std::vector<png_byte> data;
  uLong sum = 0;       ///< the Adler checksum of the rows
  z_off_t length = 0;  ///< their bytes
};

/// Colours as the file holds them: each row a filter number and three bytes a pixel. Maps through a colour table have
/// few colours and hard steps. The differences that filters make are noisier than the colours themselves, so that
/// leaving the filters out is both the fastest and the smallest.
std::vector<png_byte> FileRows(PlaneView<const Color> pixels, int begin, int end) {
  std::vector<png_byte> bytes(static_cast<std::size_t>(end - begin) * (static_cast<std::size_t>(pixels.width) * 3 + 1));
  png_byte* to = bytes.data();
  for (int y = begin; y < end; ++y) {
    *to++ = PNG_FILTER_VALUE_NONE;
    const Color* const row = pixels.Row(y);
    for (int x = 0; x < pixels.width; ++x, to += 3) {
      to[0] = static_cast<png_byte>(row[x] >> 16);
      to[1] = static_cast<png_byte>(row[x] >> 8);
      to[2] = static_cast<png_byte>(row[x]);
    }
  }
  return bytes;
}

Strip Compressed(std::vector<png_byte> rows, bool last) {
  Strip strip;
  strip.length = static_cast<z_off_t>(rows.size());
  strip.sum = adler32_z(adler32_z(0, nullptr, 0), rows.data(), rows.size());
  z_stream stream{};
  // Bare data without a header, for the header is the picture's.
  if (deflateInit2(&stream, 1, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL - 1, Z_DEFAULT_STRATEGY) != Z_OK)
    throw std::bad_alloc();
  // A flush in place of the end adds an empty block, which the bound does not count.
  strip.data.resize(deflateBound(&stream, rows.size()) + 16);
  stream.next_in = rows.data();
  stream.avail_in = static_cast<uInt>(rows.size());
  stream.next_out = strip.data.data();
  stream.avail_out = static_cast<uInt>(strip.data.size());
  deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
  strip.data.resize(stream.total_out);
  deflateEnd(&stream);
  strip.data.shrink_to_fit();
  return strip;
}

/// The compressed data of the picture, header and checksum included. Where the strips end depends on the picture alone,
/// so that the bytes are the same however many threads share the work.
std::vector<Strip> CompressedStrips(PlaneView<const Color> pixels) {
  constexpr int kBytes = 1 << 18;
  const int rows = std::max(kBytes / std::max(pixels.width, 1) / 3, 1);
  const int count = (pixels.height + rows - 1) / rows;
  std::vector<Strip> strips(static_cast<std::size_t>(count));
  ParallelFor(count, [&](int i) {
    const int end = std::min(pixels.height - i * rows, rows) + i * rows;
    strips[static_cast<std::size_t>(i)] = Compressed(FileRows(pixels, i * rows, end), i == count - 1);
  });
  if (strips.empty()) return strips;
  strips.front().data.insert(strips.front().data.begin(), {0x78, 0x01});
  uLong sum = adler32_z(0, nullptr, 0);
  for (const Strip& strip : strips) sum = adler32_combine(sum, strip.sum, strip.length);
  for (const int shift : {24, 16, 8, 0}) strips.back().data.push_back(static_cast<png_byte>(sum >> shift));
  return strips;
}

void Fail(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

void Ignore(png_structp, png_const_charp) {}

/// No object with a destructor may live in here, for libpng leaves it by a long jump.
bool Write(std::FILE* file, int width, int height, std::span<const Strip> strips) {
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
  const auto chunk = [png](const char* type, const png_byte* data, std::size_t length) {
    png_write_chunk(png, reinterpret_cast<png_const_bytep>(type), data, length);
  };
  for (const Strip& strip : strips) chunk("IDAT", strip.data.data(), strip.data.size());
  chunk("IEND", nullptr, 0);
  png_destroy_write_struct(&png, &info);
  return true;
}

/// Creates a new file in the folder that nobody takes for a picture, with the permissions that the user's mask leaves.
int CreateTemporary(const fs::path& folder, fs::path& temporary) {
  for (int number = 0;; ++number) {
    temporary = folder / (".vornalite-" + std::to_string(getpid()) + "-" + std::to_string(number) + ".part");
    const int created = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (created >= 0 || errno != EEXIST) return created;
  }
}

/// Makes the new name itself last. A file system that cannot do so keeps the picture nevertheless.
void FlushFolder(const fs::path& folder) {
  const int opened = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (opened < 0) return;
  fsync(opened);
  close(opened);
}

}  // namespace

bool SavePicture(const Ref<FolderItem>& file, const Ref<Picture>& image, float /*gamma*/) {
  const fs::path path = file->Path();
  const PlaneView<const Color> pixels = image->Pixels();
  const fs::path folder = path.has_parent_path() ? path.parent_path() : ".";
  const std::vector<Strip> strips = CompressedStrips(pixels);

  fs::path temporary;
  const int created = CreateTemporary(folder, temporary);
  if (created < 0) return false;
  std::FILE* const stream = fdopen(created, "wb");
  bool written =
      stream && Write(stream, pixels.width, pixels.height, strips) && std::fflush(stream) == 0 && fsync(created) == 0;
  const bool closed = (stream ? std::fclose(stream) : close(created)) == 0;
  written = written && closed && std::rename(temporary.c_str(), path.c_str()) == 0;
  if (written)
    FlushFolder(folder);
  else
    unlink(temporary.c_str());
  return written;
}

}  // namespace platform::PNGu
