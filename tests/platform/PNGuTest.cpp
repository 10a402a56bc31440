#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QImage>
#include <csignal>
#include <random>

#include "platform/pictures/Graphics.h"
#include "platform/pictures/PNGu.h"
#include "tests/support/FileCalls.h"
#include "tests/support/Folder.h"

namespace platform {
namespace {

/// A picture of random colours.
Ref<Picture> Noise(int width, int height) {
  std::mt19937 random(7);
  auto picture = NewPicture(width, height, 32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) picture->Pixels()(x, y) = Opaque(static_cast<std::uint32_t>(random()));
  return picture;
}

bool Save(const std::filesystem::path& path, const Ref<Picture>& picture) {
  return PNGu::SavePicture(MakeRef<FolderItem>(path), picture, -1.0F);
}

/// Whether the file decodes to the picture, three bytes a pixel.
bool Holds(const std::filesystem::path& path, const Ref<Picture>& picture) {
  const QImage image(path.c_str(), "PNG");
  if (image.width() != picture->Width() || image.height() != picture->Height() || image.hasAlphaChannel()) return false;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixel(x, y) != picture->Pixels()(x, y)) return false;
  return true;
}

/// Limits the size of files of this process, as on a full disk. The signal of the limit kills the process.
void LimitFiles() {
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = 20'000;
  setrlimit(RLIMIT_FSIZE, &limit);
}

TEST(SavePicture, WritesThePixelsAndReplacesTheFile) {
  const Folder folder;
  const auto path = folder.Write("run7_(Fe).png", "something else");
  const int sizes[][2] = {{1, 1}, {3, 2}, {17, 5}, {1, 1000}, {257, 3}, {900, 500}};
  for (const auto& [width, height] : sizes) {
    EXPECT_TRUE(Save(path, Noise(width, height)));
    EXPECT_TRUE(Holds(path, Noise(width, height))) << width << ' ' << height;
  }
  EXPECT_TRUE(Save(path, MakeRef<Picture>(2, 1, std::vector<std::uint8_t>{7, 200})));
  EXPECT_EQ(QImage(path.c_str()).pixel(1, 0), OpaqueRGB(200, 200, 200));
  EXPECT_EQ(folder.Count(), 1);
  const mode_t before = umask(027);
  EXPECT_TRUE(Save(folder.Path() / "Mg.png", Noise(2, 2)));
  umask(before);
  struct stat status {};
  ASSERT_EQ(stat((folder.Path() / "Mg.png").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0640u) << "the permissions are left to the user's mask";
}

TEST(SavePicture, KeepsTheOldFileWhenTheProcessIsKilled) {
  const Folder folder;
  const auto path = folder.Path() / "Fe.png";
  ASSERT_TRUE(Save(path, Noise(5, 5)));
  const auto saveTooMuch = [&] {
    LimitFiles();
    Save(path, Noise(200, 200));
  };
  EXPECT_EXIT(saveTooMuch(), testing::KilledBySignal(SIGXFSZ), "");
  EXPECT_TRUE(Holds(path, Noise(5, 5)));
  // The next save removes what it left, but not what another program is writing.
  EXPECT_EQ(folder.Count(), 2);
  const int busy = open(folder.Write(".vornalite-1-0.part", "half").c_str(), O_RDONLY);
  ASSERT_EQ(flock(busy, LOCK_EX), 0);
  EXPECT_TRUE(Save(path, Noise(5, 5)));
  EXPECT_EQ(folder.Count(), 2);
  close(busy);
  EXPECT_TRUE(Save(path, Noise(5, 5)));
  EXPECT_EQ(folder.Count(), 1);
}

TEST(SavePicture, KeepsThePictureWhereFilesCannotBeFlushed) {
  const Folder folder;
  fileCalls.flush = [] { return EINVAL; };
  EXPECT_TRUE(Save(folder.Path() / "Fe.png", Noise(5, 5)));
  EXPECT_TRUE(Holds(folder.Path() / "Fe.png", Noise(5, 5)));
  fileCalls.flush = [] { return EIO; };
  EXPECT_FALSE(Save(folder.Path() / "Mg.png", Noise(5, 5)));
  fileCalls = {};
  EXPECT_EQ(folder.Count(), 1);
}

/// On file systems of three kinds: with files that get a name later, with renaming that does not replace, with neither.
TEST(SaveNewPicture, KeepsAFileThatTookTheNameMeanwhile) {
  for (const auto& [unnamed, renames] : {std::pair{true, true}, {false, true}, {false, false}}) {
    const Folder folder;
    const auto path = folder.Path() / "Fe.png";
    const auto save = [&] { return PNGu::SaveNewPicture(MakeRef<FolderItem>(path), Noise(5, 5)); };
    int hiddenFiles = -1;
    fileCalls = {.flush =
                     [&] {
                       if (hiddenFiles < 0) hiddenFiles = folder.Count();
                       folder.Write("Fe.png", "theirs");
                       return 0;
                     },
                 .unnamedFiles = unnamed,
                 .renamesWithoutReplacing = renames};
    EXPECT_EQ(save(), NewFile::Outcome::NameTaken);
    EXPECT_EQ(hiddenFiles, unnamed ? 0 : 1) << "an unnamed file disappears when the program is killed";
    EXPECT_EQ(folder.Count(), 1);
    EXPECT_EQ(std::filesystem::file_size(path), 6u);
    fileCalls.flush = nullptr;
    std::filesystem::remove(path);
    std::filesystem::create_symlink("nowhere", path);
    EXPECT_EQ(save(), NewFile::Outcome::NameTaken) << "also by a dangling link";
    std::filesystem::remove(path);
    EXPECT_EQ(save(), NewFile::Outcome::Written);
    EXPECT_TRUE(Holds(path, Noise(5, 5)));
    EXPECT_EQ(folder.Count(), 1);
    fileCalls = {};
  }
}

}  // namespace
}  // namespace platform
