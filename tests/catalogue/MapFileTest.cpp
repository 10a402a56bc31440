#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "catalogue/MapFile.h"
#include "catalogue/MapFileMessages.h"
#include "tests/support/Folder.h"
#include "tests/support/Messages.h"

using platform::Array;
using platform::BinaryStream;
using platform::Ref;

namespace {

/// A map file on the disk, all zeroes except what is put into it.
class MapFile : public MessagesTest {
 protected:
  void PutShort(std::size_t position, int value) {
    Put(position, {static_cast<char>(value), static_cast<char>(value >> 8)});
  }
  void Put(std::size_t position, const std::string& text) {
    if (bytes_.size() < position + text.size()) bytes_.resize(position + text.size());
    bytes_.replace(position, text.size(), text);
  }
  void PutCounts(int value) {
    for (const std::size_t position : {1390, 1394, 1746, 1750, 2144, 2148, 2570, 2820, 4292, 4556})
      PutShort(position, value);
  }
  void PutSizes(int a, int b, int c, int d) {
    PutShort(2172, a), PutShort(2174, b), PutShort(2498, c), PutShort(2502, d);
  }
  Ref<BinaryStream> Open() { return BinaryStream::Open(folder_.Write("map.xray", bytes_)); }

 private:
  std::string bytes_;
  const platform::Folder folder_;
};

std::string Name(Ref<BinaryStream>& stream, int i) { return Globals::ReadXrayGetImageName(stream, i).Utf8(); }

}  // namespace

TEST_F(MapFile, ReadsCountSizeAndNames) {
  PutCounts(4);
  PutSizes(4, 4, 4, 4);  // 32 bytes a map, so the names lie 1256 bytes apart
  Put(3072, std::string("Fe\0xx", 5));
  Put(4840, "Titan");
  Put(6096, std::string("\0Mg", 3));
  Put(7352, "\xB5g");  // the file ends within the field; the bytes are in no known encoding
  auto stream = Open();
  EXPECT_EQ(Globals::ReadXrayGetNbImages(stream, true), 4);
  EXPECT_EQ(Globals::ReadXrayGet1dPixelsize(stream, true), 4);
  for (const auto& [i, name] :
       {std::pair{1, "Fe"}, {2, "Titan"}, {3, ""}, {4, "µg"}, {5, ""}, {0, "Fe"}, {INT_MIN, "Fe"}})
    EXPECT_EQ(Name(stream, i), name) << i;
  EXPECT_TRUE(messages.empty());
}

TEST_F(MapFile, PositionsThatDisagreeTakeTheMedianAndWarnIfAsked) {
  PutCounts(7);
  PutShort(1390, 0), PutShort(2148, 0), PutShort(2570, 0), PutShort(4556, 0);
  PutSizes(256, 128, 512, 64);
  auto stream = Open();
  EXPECT_EQ(Globals::ReadXrayGetNbImages(stream, false), 7);
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(Globals::ReadXrayGet1dPixelsize(stream, true), 128);
  EXPECT_EQ(messages,
            std::vector<std::string>{"Warning. The determination of the pixel size is inconclusive. Using 128 as a "
                                     "best guess.\n256 128 512 64 128 "});
}

// Computed with unbounded integers, then wrapped to 32 signed bits.
TEST(MapFileArithmetic, PositionsOfNamesWrapAround) {
  for (const auto& [i, size, position] :
       {std::tuple{2, 256, 135880}, {5, 128, 139552}, {32767, 32767, 40436844}, {2, -32768, -2147478840}})
    EXPECT_EQ(NamePosition(i, size), position);
}

TEST_F(MapFile, MedianRoundsOneHalfUpward) {
  const std::pair<Array<std::int32_t>, int> cases[] = {
      {{8, 7, 9, 1}, 8}, {{-3, -2}, -2}, {{2147483647, 2147483647}, 2147483647}, {{5, 1, 4}, 4}, {{}, 0}};
  for (const auto& [values, median] : cases) EXPECT_EQ(Globals::MedianInteger(values), median);
  EXPECT_EQ(cases[0].first(0), 8) << "the values keep their order";
  EXPECT_EQ(Globals::CheckForMostLikely({}, "pixel size", false), 0);
  EXPECT_EQ(messages, (std::vector<std::string>{"Median determination error", "pixel size determination error"}));
}
