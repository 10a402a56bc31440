#include "platform/PNGu.h"

#include <fcntl.h>
#include <png.h>
#include <unistd.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <string>
#include <vector>

namespace platform::PNGu {

namespace {

namespace fs = std::filesystem;

void Fail(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

void Ignore(png_structp, png_const_charp) {}

/// Writes the picture; `row` has room for the three bytes of each pixel of a row. No object with a destructor may live
/// in here, for libpng leaves it by a long jump.
bool Write(std::FILE* file, PlaneView<const Color> pixels, png_bytep row) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, Fail, Ignore);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info || setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_init_io(png, file);
  png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
  png_set_IHDR(png, info, static_cast<png_uint_32>(pixels.width), static_cast<png_uint_32>(pixels.height), 8,
               PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  // Maps through a colour table have few colours and hard steps: the differences that filters make are noisier than the
  // colours, so that leaving them out is both the fastest and the smallest.
  png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_set_compression_level(png, 1);
  png_write_info(png, info);
  for (int y = 0; y < pixels.height; ++y) {
    png_bytep to = row;
    for (int x = 0; x < pixels.width; ++x) {
      const Color color = pixels(x, y);
      *to++ = static_cast<png_byte>(color >> 16);
      *to++ = static_cast<png_byte>(color >> 8);
      *to++ = static_cast<png_byte>(color);
    }
    png_write_row(png, row);
  }
  png_write_end(png, info);
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
  std::vector<png_byte> row(static_cast<std::size_t>(pixels.width) * 3);

  fs::path temporary;
  const int created = CreateTemporary(folder, temporary);
  if (created < 0) return false;
  std::FILE* const stream = fdopen(created, "wb");
  bool written = stream && Write(stream, pixels, row.data()) && std::fflush(stream) == 0 && fsync(created) == 0;
  const bool closed = (stream ? std::fclose(stream) : close(created)) == 0;
  written = written && closed && std::rename(temporary.c_str(), path.c_str()) == 0;
  if (written)
    FlushFolder(folder);
  else
    unlink(temporary.c_str());
  return written;
}

}  // namespace platform::PNGu
