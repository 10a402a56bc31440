#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtGlobal>
#include <cerrno>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

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

/// Size, "grey" or "colours", and the FNV-1a digest of levels or pixels, or why there is no picture. `nearly`: of the
/// upper four bits of each component, for decoders that may round differently.
std::string Describe(const OpenedPicture& opened, bool nearly = false) {
  if (!opened.picture) return opened.failure.Utf8();
  Picture& picture = *opened.picture;
  const std::string size = std::to_string(picture.Width()) + "x" + std::to_string(picture.Height());
  const char* kind = picture.GreyLevels().empty() ? "colours" : "grey";
  const PlaneView<OpaqueColor> pixels = picture.Pixels();
  unsigned hash = 2166136261U;
  for (int i = 0; i < pixels.width * pixels.height; ++i)
    for (const int shift : {16, 8, 0}) hash = (hash ^ (pixels.data[i] >> shift & (nearly ? 0xF0 : 0xFF))) * 16777619U;
  char digest[9];
  std::snprintf(digest, sizeof digest, "%08x", hash);
  return size + (nearly ? " nearly " : " ") + kind + " " + digest;
}

/// The lines "name: description" of tests/odd/expected.txt. Failures are given as far as they do not depend on the
/// version of a library. The file states how the digests were verified.
std::map<std::string, std::string> Expected() {
  std::map<std::string, std::string> expected;
  std::ifstream file(OddFolder() / "expected.txt");
  for (std::string line; std::getline(file, line);)
    if (const std::size_t colon = line.find(": "); !line.starts_with("#") && colon != std::string::npos)
      expected[line.substr(0, colon)] = line.substr(colon + 2);
  return expected;
}

TEST(OddFiles, OpenOrFailAsExpected) {
  for (const auto& [name, expected] : Expected()) {
    const std::string seen =
        name + ": " + Describe(ReadPicture(OddFolder() / name), expected.find("nearly") != std::string::npos);
    EXPECT_TRUE(seen.starts_with(name + ": " + expected)) << "expected " << expected << "\nseen " << seen;
  }
  for (const auto& entry : std::filesystem::directory_iterator(OddFolder()))
    EXPECT_EQ(Expected().count(entry.path().filename().string()), entry.path().filename() == "expected.txt" ? 0U : 1U)
        << entry.path();
  // Its first bytes are those of a PNG; ReadPict must read the PICT nevertheless.
  EXPECT_EQ(Describe(ReadPict(ByteSource(OddFolder() / "png-in-the-preamble.pict"))), Expected()["grey.pict"]);
  // Opening a pipe must not wait for a writer.
  const Folder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  for (const char* name : {"pipe", "."})
    EXPECT_EQ(Describe(ReadPicture(folder.Path() / name)), "not an image: no regular file");
  EXPECT_EQ(Describe(ReadPicture(folder.Path() / "none")), "cannot be read: No such file or directory");
}

TEST(OddFiles, TruncatedGiveAFailureOrTheWholePictureAndPrintNothing) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  for (const auto& [name, expected] : Expected()) {
    const Bytes whole = FileContent(OddFolder() / name);
    const OpenedPicture opened = ReadPicture(whole);
    if (!opened.picture) continue;
    const auto pixels = Describe(opened);
    for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 500) {
      const OpenedPicture cut = ReadPicture(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
      if (cut.picture) {
        EXPECT_EQ(Describe(cut), pixels) << name << " at " << size;
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

TEST(Jpeg, LeavesOtherMessagesOfTheToolkitAlone) {
  EXPECT_TRUE(ReadPicture(OddFolder() / "grey.jpg").picture);
  testing::internal::CaptureStderr();
  qErrnoWarning(EMFILE, "no pipe");  // it has no category
  EXPECT_NE(testing::internal::GetCapturedStderr().find("no pipe"), std::string::npos);
}

/// Bytes that this process has read from files.
std::int64_t BytesRead() {
  std::ifstream file("/proc/self/io");
  std::string word;
  std::int64_t count = 0;
  file >> word >> count;  // the first line is "rchar: "
  return count;
}

TEST(OddFiles, AreReadNoFurtherThanTheFirstImageAndMayShrinkMeanwhile) {
  const Folder folder;
  const auto copy = folder.Path() / "copy";
  for (const auto& [name, expected] : Expected()) {
    const std::string whole = Describe(ReadPicture(OddFolder() / name));
    if (!ReadPicture(OddFolder() / name).picture) continue;
    std::filesystem::copy_file(OddFolder() / name, copy, std::filesystem::copy_options::overwrite_existing);
    ByteSource source(copy);
    std::filesystem::resize_file(copy, 40);  // past the signatures
    const std::string failure = Describe(ReadPicture(std::move(source)));
    EXPECT_TRUE(failure.starts_with("truncated")) << name << ": " << failure;
    std::filesystem::copy_file(OddFolder() / name, copy, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::resize_file(copy, std::uintmax_t{2} << 30);
    const std::int64_t before = BytesRead();
    EXPECT_EQ(Describe(ReadPicture(copy)), whole) << name;
    EXPECT_LT(BytesRead() - before, 1 << 20) << name;
  }
  // Without its end opcode, the zeros that follow are opcodes.
  std::filesystem::copy_file(OddFolder() / "grey.pict", copy, std::filesystem::copy_options::overwrite_existing);
  std::filesystem::resize_file(copy, std::filesystem::file_size(copy) - 2);
  std::filesystem::resize_file(copy, std::uintmax_t{2} << 30);
  const std::int64_t before = BytesRead();
  EXPECT_EQ(Describe(ReadPicture(copy)), "truncated or damaged: a PICT without an end");
  EXPECT_LT(BytesRead() - before, 1 << 24);
}

}  // namespace
}  // namespace platform
