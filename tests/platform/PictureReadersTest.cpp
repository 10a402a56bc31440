#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <map>
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

/// Size, "grey" or "colours", and the FNV-1a digest of levels or pixels, or why there is no picture. `nearly`: of the
/// upper four bits of each component, for decoders that may round in their own way.
std::string Describe(const OpenedPicture& opened, bool nearly = false) {
  if (!opened.picture) return opened.failure.Utf8();
  Picture& picture = *opened.picture;
  const std::string size = std::to_string(picture.Width()) + "x" + std::to_string(picture.Height());
  const char* kind = picture.GreyLevels().empty() ? "colours" : "grey";
  const PlaneView<Color> pixels = picture.Pixels();
  unsigned hash = 2166136261U;
  for (int i = 0; i < pixels.width * pixels.height; ++i)
    for (const int shift : {16, 8, 0}) hash = (hash ^ (pixels.data[i] >> shift & (nearly ? 0xF0 : 0xFF))) * 16777619U;
  char digest[9];
  std::snprintf(digest, sizeof digest, "%08x", hash);
  return size + (nearly ? " nearly " : " ") + kind + " " + digest;
}

/// The lines "name: description" of tests/odd/expected.txt. A failure is given as far as it does not depend on the
/// version of a library. See there how the digests were verified.
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
  // Its first bytes are those of a PNG; told to read a PICT, the reader must not be led astray.
  EXPECT_EQ(Describe(ReadPict(ByteSource(OddFolder() / "png-in-the-preamble.pict"))), Expected()["grey.pict"]);
  // Opening a pipe must not wait for a writer.
  const Folder folder;
  ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
  for (const char* name : {"pipe", "."})
    EXPECT_EQ(Describe(ReadPicture(folder.Path() / name)), "not an image: no regular file");
  EXPECT_EQ(Describe(ReadPicture(folder.Path() / "none")), "cannot be read: No such file or directory");
}

TEST(OddFiles, CutShortGiveNothingOrTheWholePictureAndNoWord) {
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
    std::filesystem::resize_file(copy, 40);  // behind the signatures
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
