#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "catalogue/MapFile.h"
#include "catalogue/MapFileMessages.h"
#include "tests/support/Folder.h"
#include "tests/support/Messages.h"

using platform::Array;
using platform::BinaryStream;
using platform::Ref;

namespace {

/// A map file on the disk, zero wherever nothing is put.
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
  Put(7352, "\xB5g");  // the file ends within the field; the bytes are of no encoding
  auto stream = Open();
  EXPECT_EQ(Globals::ReadXrayGetNbImages(stream, true), 4);
  EXPECT_EQ(Globals::ReadXrayGet1dPixelsize(stream, true), 4);
  EXPECT_EQ(Name(stream, 1), "Fe");
  EXPECT_EQ(Name(stream, 2), "Titan");
  EXPECT_EQ(Name(stream, 3), "");
  EXPECT_EQ(Name(stream, 4), "µg");
  EXPECT_EQ(Name(stream, 5), "");
  EXPECT_EQ(Name(stream, 0), "Fe");
  EXPECT_EQ(Name(stream, -2147483647 - 1), "Fe");
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

// A lying file: the highest count, names anywhere, also before the start of the file.
TEST_F(MapFile, HostileCountsAndSizesEndSoon) {
  PutCounts(32767);
  for (const int edge : {32767, -32768, 1}) {
    PutSizes(edge, edge, edge, edge);
    auto stream = Open();
    const int count = Globals::ReadXrayGetNbImages(stream, false);
    ASSERT_EQ(count, 32767);
    int longest = 0;
    for (int i = 1; i <= count; ++i) longest = std::max(longest, Len(Globals::ReadXrayGetImageName(stream, i)));
    EXPECT_LE(longest, 5);
  }
}

TEST_F(MapFile, ShortAndMissingFiles) {
  Put(0, "no map file");
  auto stream = Open();
  EXPECT_EQ(Globals::ReadXrayGetNbImages(stream, true), 0);
  EXPECT_EQ(Name(stream, 1), "");
  Ref<BinaryStream> nothing;
  EXPECT_THROW(Globals::ReadXrayGetNbImages(nothing, false), platform::NilObjectException);
  EXPECT_THROW(Globals::ReadXrayGetImageName(nothing, 1), platform::NilObjectException);
}

// Worked with unbounded integers, cut to 32 bits and signed at the end.
TEST(MapFileArithmetic, PositionsOfNamesWrapAround) {
  EXPECT_EQ(catalogue::NamePosition(2, 256), 135880);
  EXPECT_EQ(catalogue::NamePosition(5, 128), 139552);
  EXPECT_EQ(catalogue::NamePosition(32767, 32767), 40436844);
  EXPECT_EQ(catalogue::NamePosition(2, -32768), -2147478840);
}

TEST_F(MapFile, MedianRoundsOneHalfUpward) {
  const Array<std::int32_t> values{8, 7, 9, 1};
  EXPECT_EQ(Globals::MedianInteger(values), 8);
  EXPECT_EQ(values(0), 8);
  EXPECT_EQ(Globals::MedianInteger({-3, -2}), -2);
  EXPECT_EQ(Globals::MedianInteger({2147483647, 2147483647}), 2147483647);
  EXPECT_EQ(Globals::MedianInteger({5, 1, 4}), 4);
  EXPECT_EQ(Globals::MedianInteger({}), 0);
  EXPECT_EQ(Globals::CheckForMostLikely({}, "pixel size", false), 0);
  EXPECT_EQ(messages, (std::vector<std::string>{"Median determination error", "pixel size determination error"}));
}
