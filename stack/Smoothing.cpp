#include "stack/Smoothing.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "platform/values/Errors.h"
#include "platform/values/Parallel.h"

// On ARM, NEON only: the vectors of SVE have no fixed size, so they cannot be elements of arrays.
#define HWY_DISABLED_TARGETS (HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stack/Smoothing.cpp"
#include <hwy/foreach_target.h>
// The order matters: foreach_target.h comes first.
#include <hwy/aligned_allocator.h>
#include <hwy/cache_control.h>
#include <hwy/highway.h>

#ifndef VORNALITE_SMOOTHING_ONCE
#define VORNALITE_SMOOTHING_ONCE

namespace {

// All passes move down the plane together, four rows per step. A pass reads the four rows that the previous pass has
// just computed and the two rows above these, which it has kept, and computes four rows, one row higher up. So a step
// works in the nearest caches, and only two rows per pass are kept between steps.
//
// A row is divided into eight strips of equal width, and its doubles are stored in groups of eight, a cache line: group
// i holds column i of each strip. So the left and right neighbours of a group are the groups before and after it: no
// load crosses a cache line, and what was loaded as the right neighbour is the middle of the next group. The group
// before the first and that after the last repeat the ends of the adjacent strips. The last strips may have fewer
// columns, or none; what is computed beyond them is never used.
//
// A pass touches no other memory than the rows that it reads: its results take the place of the first four of them.
// They are stored one group further to the left, where a pass from left to right has read everything.
//
// The order of additions determines the bits of the result. A value is the sum of its left, middle and right column,
// each summed from top to bottom in doubles, added in that order. Only the first pass may add in another order, because
// its sums are whole numbers.

constexpr int kStep = 4;
/// Strips of a row; doubles of a group and of a cache line.
constexpr int kStrips = 8;
/// Levels in a word of 32 bits.
constexpr int kPerWord = 4;
/// Doubles of 4 KB. Loads and stores whose addresses differ by multiples of it hinder each other, so the distance of
/// the rows leaves this remainder. The choice is measured: a bad one takes a quarter longer.
constexpr std::size_t kPage = 512, kRowOffset = 29 * kStrips;
/// Above this level values may be so small that the product with the second part of 1/9 is subnormal.
constexpr int kMaximumLevelOfSplitNinth = 300;

constexpr int RoundUp(int value, int unit) { return (value + unit - 1) / unit * unit; }

/// Rows of a block, from top to bottom. Each begins on a cache line and has a spare line on both sides.
template <int count>
using Rows = std::array<double*, count>;

/// Where a row holds its columns.
struct RowLayout {
  explicit RowLayout(int columns)
      : width(columns),
        strip((columns + kStrips - 1) / kStrips),
        second(Of(1)),
        last(Of(width - 1)),
        beforeLast(Of(width - 2)) {}
  /// The index of column x in the row.
  int Of(int x) const { return x % strip * kStrips + x / strip; }
  int Size() const { return strip * kStrips; }

  int width;                     ///< columns of the plane
  int strip;                     ///< columns of a strip
  int second, last, beforeLast;  ///< indexes of these columns
};

}  // namespace

#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// At most a group.
using Doubles = hn::CappedTag<double, kStrips>;
using V = hn::Vec<Doubles>;

/// Correctly rounded division by 9.
struct PlainNinth {
  template <class Vector>
  Vector operator()(Vector sum) const {
    return hn::Div(sum, hn::Set(hn::DFromV<Vector>(), 9.0));
  }
};

#if HWY_NATIVE_FMA
/// The same without a division. 1/9 is split into two doubles, its rounded value and the remainder; their relative
/// error is below 2^-105. The quotient s / 9 is at least 1/18 ulp away from the midpoint between two doubles: s is a
/// multiple of 8 ulps of the quotient and 9 times a midpoint is an odd multiple of half an ulp, so the two differ by at
/// least half an ulp. Hence the single rounding of the fused operation is correct, as long as the small product is a
/// normal number.
struct SplitNinth {
  template <class Vector>
  Vector operator()(Vector sum) const {
    const hn::DFromV<Vector> d;
    const Vector high = hn::Set(d, 0x1.c71c71c71c71cp-4);
    const Vector low = hn::Set(d, 0x1.c71c71c71c71cp-58);
    return hn::MulAdd(sum, high, hn::Mul(sum, low));
  }
};
#else
using SplitNinth = PlainNinth;
#endif

/// Four rows of the interior: the vector of every group that begins at its lane `part`. `in` begins one row above them.
template <class Ninth>
void InteriorVectors(Rows<kStep + 2> in, Rows<kStep> out, int part, int size, Ninth ninth) {
  const Doubles d;
  // Some of the sums use the multiply-add units, with identical bits: on some processors these work in parallel to the
  // adders. With the divisions by 9 that share is half of the work.
  const auto add = [&](std::size_t row, V a, V b) {
    return HWY_NATIVE_FMA && row % 2 ? hn::MulAdd(b, hn::Set(d, 1.0), a) : hn::Add(a, b);
  };
  // One column of values each: first the left one, whose sums are all that is kept of it, then the middle one, then the
  // right one, which stays loaded as the middle of the next group.
  constexpr std::size_t kRead = kStep + 2;
  V column[kRead], left[kStep], sums[kStep];
#pragma GCC unroll 6
  for (std::size_t row = 0; row < kRead; ++row) column[row] = hn::Load(d, in[row] + part - kStrips);
#pragma GCC unroll 4
  for (std::size_t row = 0; row < kStep; ++row)
    left[row] = hn::Add(hn::Add(column[row], column[row + 1]), column[row + 2]);
#pragma GCC unroll 6
  for (std::size_t row = 0; row < kRead; ++row) column[row] = hn::Load(d, in[row] + part);
  for (int x = part; x < size; x += kStrips) {
#pragma GCC unroll 4
    for (std::size_t row = 0; row < kStep; ++row) {
      sums[row] = add(row, add(row, add(row, left[row], column[row]), column[row + 1]), column[row + 2]);
      left[row] = hn::Add(hn::Add(column[row], column[row + 1]), column[row + 2]);
    }
#pragma GCC unroll 6
    for (std::size_t row = 0; row < kRead; ++row) column[row] = hn::Load(d, in[row] + x + kStrips);
#pragma GCC unroll 4
    for (std::size_t row = 0; row < kStep; ++row) {
      sums[row] = add(row, add(row, add(row, sums[row], column[row]), column[row + 1]), column[row + 2]);
      hn::Store(ninth(sums[row]), d, out[row] + x);
    }
  }
}

/// Four rows of the interior, without the first and last column. `in` begins one row above them.
template <class Ninth>
void InteriorRows(const Rows<kStep + 2>& in, const Rows<kStep>& out, const RowLayout& layout, Ninth ninth) {
  for (int part = 0; part < kStrips; part += static_cast<int>(hn::Lanes(Doubles())))
    InteriorVectors(in, out, part, layout.Size(), ninth);
}

template <class Ninth>
void InteriorRow(const double* above, const double* here, const double* below, double* out, const RowLayout& layout,
                 Ninth ninth) {
  const Doubles d;
  for (int x = 0; x < layout.Size(); x += static_cast<int>(hn::Lanes(d))) {
    const double *a = above + x, *b = here + x, *c = below + x;
    V sum = hn::Add(hn::Add(hn::Load(d, a - kStrips), hn::Load(d, b - kStrips)), hn::Load(d, c - kStrips));
    for (const int column : {0, kStrips}) {
      sum = hn::Add(sum, hn::Load(d, a + column));
      sum = hn::Add(sum, hn::Load(d, b + column));
      sum = hn::Add(sum, hn::Load(d, c + column));
    }
    hn::Store(ninth(sum), d, out + x);
  }
}

/// The top or bottom row without its corners: row `twice` counts twice, row `once` once.
template <class Ninth>
void EdgeRow(const double* twice, const double* once, double* out, const RowLayout& layout, Ninth ninth) {
  const Doubles d;
  const V two = hn::Set(d, 2.0);
  for (int x = 0; x < layout.Size(); x += static_cast<int>(hn::Lanes(d))) {
    const double *a = twice + x, *b = once + x;
    V sum = hn::Add(hn::Mul(two, hn::Load(d, a - kStrips)), hn::Load(d, b - kStrips));
    for (const int column : {0, kStrips}) {
      sum = hn::Add(sum, hn::Mul(two, hn::Load(d, a + column)));
      sum = hn::Add(sum, hn::Load(d, b + column));
    }
    hn::Store(ninth(sum), d, out + x);
  }
}

/// First and last value of a row.
struct Ends {
  double first, last;
};

/// Those of an interior row. The left column of the sum comes first at both ends.
inline Ends InteriorEnds(const double* above, const double* here, const double* below, const RowLayout& layout) {
  const int second = layout.second, last = layout.last, beforeLast = layout.beforeLast;
  return {(2.0 * above[0] + 2.0 * here[0] + 2.0 * below[0] + above[second] + here[second] + below[second]) / 9.0,
          (above[beforeLast] + here[beforeLast] + below[beforeLast] + 2.0 * above[last] + 2.0 * here[last] +
           2.0 * below[last]) /
              9.0};
}

/// The corners of the edge row `here`; `inner` is the row next to it.
inline Ends Corners(const double* here, const double* inner, const RowLayout& layout) {
  const int second = layout.second, last = layout.last, beforeLast = layout.beforeLast;
  return {(4.0 * here[0] + 2.0 * here[second] + 2.0 * inner[0] + inner[second]) / 9.0,
          (4.0 * here[last] + 2.0 * here[beforeLast] + 2.0 * inner[last] + inner[beforeLast]) / 9.0};
}

/// Repeats the ends of the strips beside the adjacent ones.
inline void JoinStrips(double* row, const RowLayout& layout) {
  constexpr std::size_t kAllButOne = (kStrips - 1) * sizeof(double);
  double* const end = row + layout.Size();
  std::memcpy(row - kStrips + 1, end - kStrips, kAllButOne);
  std::memcpy(end, row + 1, kAllButOne);
}

/// One pass: computes four rows from `top` on, those that are in the plane. `in` begins one row above them. `out` are
/// the first four of these, a group further to the left.
template <class Ninth>
void PassStep(const Rows<kStep + 2>& in, const Rows<kStep>& out, int top, const RowLayout& layout, int height,
              Ninth ninth) {
  std::array<Ends, kStep> ends;  // read before these columns are overwritten
  for (std::size_t i = 0; i < kStep; ++i) {
    const int y = top + static_cast<int>(i);
    const double *above = in[i], *here = in[i + 1], *below = in[i + 2];
    if (y == 0)
      ends[i] = Corners(here, below, layout);
    else if (y == height - 1)
      ends[i] = Corners(here, above, layout);
    else
      ends[i] = InteriorEnds(above, here, below, layout);
  }
  const bool allInterior = top > 0 && top + kStep < height;
  if (allInterior) InteriorRows(in, out, layout, ninth);
  for (std::size_t i = 0; i < kStep; ++i) {
    const int y = top + static_cast<int>(i);
    if (y < 0 || y >= height) continue;
    const double *above = in[i], *here = in[i + 1], *below = in[i + 2];
    if (y == 0)
      EdgeRow(here, below, out[i], layout, ninth);
    else if (y == height - 1)
      EdgeRow(above, here, out[i], layout, ninth);
    else if (!allInterior)
      InteriorRow(above, here, below, out[i], layout, ninth);
    out[i][0] = ends[i].first;
    out[i][layout.last] = ends[i].last;
    JoinStrips(out[i], layout);
  }
}

/// Sums of up to nine grey levels.
using Sums = hn::ScalableTag<std::uint16_t>;

/// The sums of the first pass, over the original, exact in whole numbers: first down the columns, then over three
/// columns.
class FirstPass {
 public:
  /// `columns` has space for a row with a spare line on both sides.
  FirstPass(platform::PlaneView<const std::uint8_t> original, std::uint16_t* columns)
      : original_(original), columns_(columns) {}

  /// The sums of the columns around row y. Columns x - 1, x and x + 1 add up to the sum at x, at both ends too; only
  /// the corners of the bottom row are different.
  const std::uint16_t* ColumnSums(int y) const {
    const int width = original_.width, height = original_.height;
    const std::uint8_t* here = original_.Row(y);
    if (y == 0)
      Weigh(here, here, original_.Row(1));
    else if (y == height - 1)
      Weigh(original_.Row(y - 1), original_.Row(y - 1), here);
    else
      Weigh(original_.Row(y - 1), here, original_.Row(y + 1));
    columns_[-1] = columns_[0];
    columns_[width] = columns_[width - 1];
    return columns_;
  }

  platform::PlaneView<const std::uint8_t> Original() const { return original_; }

  /// The sum at the first or last column of the bottom row, where the bottom row itself counts twice.
  int BottomCornerSum(int x) const {
    const std::uint8_t* here = original_.Row(original_.height - 1);
    const std::uint8_t* inner = original_.Row(original_.height - 2);
    const int next = x == 0 ? 1 : x - 1;
    return 4 * here[x] + 2 * here[next] + 2 * inner[x] + inner[next];
  }

 private:
  void Weigh(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c) const {
    const Sums d;
    const hn::Rebind<std::uint8_t, Sums> narrow;
    const auto load = [&](const std::uint8_t* levels) { return hn::PromoteTo(d, hn::LoadU(narrow, levels)); };
    const int width = original_.width, lanes = static_cast<int>(hn::Lanes(d));
    int x = 0;
    for (; x + lanes <= width; x += lanes)
      hn::Store(hn::Add(hn::Add(load(a + x), load(b + x)), load(c + x)), d, columns_ + x);
    for (; x < width; ++x) columns_[x] = static_cast<std::uint16_t>(a[x] + b[x] + c[x]);
  }

  platform::PlaneView<const std::uint8_t> original_;
  std::uint16_t* columns_;
};

/// The sum of three neighbouring columns.
template <class D>
hn::Vec<D> AcrossColumns(D d, const std::uint16_t* columns) {
  return hn::Add(hn::Add(hn::LoadU(d, columns - 1), hn::LoadU(d, columns)), hn::LoadU(d, columns + 1));
}

/// First pass: computes four rows from `top` on, those that are in the plane. `buffer` has the space that SpaceOf says.
template <class Ninth>
void FirstStep(const FirstPass& first, const Rows<kStep>& out, int top, const RowLayout& layout, int height,
               std::uint16_t* buffer, Ninth ninth) {
  const Doubles d;
  const hn::Rebind<std::int32_t, Doubles> whole;
  const hn::Rebind<std::uint16_t, Doubles> narrow;
  const hn::Repartition<std::uint32_t, Sums> twoSums;
  const hn::Half<Sums> half;
  const std::ptrdiff_t strip = layout.strip;
  for (int y = top; y < std::min(top + kStep, height); ++y) {
    // A row of the next step but one: the processor does not foresee that it is read.
    if (const int later = y + 2 * kStep; later < height)
      for (int x = 0; x < layout.width; x += 64) hwy::Prefetch(first.Original().Row(later) + x);
    const std::uint16_t* columns = first.ColumnSums(y);
    // The sums of two strips share 32 bits, and four such pairs make a group.
    for (std::ptrdiff_t i = 0; i < strip; i += static_cast<int>(hn::Lanes(twoSums))) {
      const auto sums = [&](int n) { return hn::PromoteTo(twoSums, AcrossColumns(half, columns + i + n * strip)); };
      const auto pair = [&](int n) { return hn::Or(sums(n), hn::ShiftLeft<16>(sums(n + 1))); };
      hn::StoreInterleaved4(pair(0), pair(2), pair(4), pair(6), twoSums,
                            reinterpret_cast<std::uint32_t*>(buffer + i * kStrips));
    }
    double* row = out[static_cast<std::size_t>(y - top)];
    for (int x = 0; x < layout.Size(); x += static_cast<int>(hn::Lanes(d)))
      hn::Store(ninth(hn::PromoteTo(d, hn::PromoteTo(whole, hn::Load(narrow, buffer + x)))), d, row + x);
    if (y == height - 1)
      for (const int x : {0, layout.width - 1}) row[layout.Of(x)] = first.BottomCornerSum(x) / 9.0;
    JoinStrips(row, layout);
  }
}

/// Truncates the rows from `top` on, those that are in the plane, into the result, and raises `maximum` to their
/// largest level. `buffer` has the space that SpaceOf says.
void Truncate(const Rows<kStep>& rows, platform::PlaneView<std::uint8_t> result, int top, const RowLayout& layout,
              std::uint16_t* buffer, int& maximum) {
  const Doubles d;
  const hn::Rebind<std::int32_t, Doubles> whole;
  const hn::ScalableTag<std::uint64_t> twoWords;
  const hn::Rebind<std::uint32_t, decltype(twoWords)> oneWord;
  const int lanes = static_cast<int>(hn::Lanes(twoWords));
  const std::ptrdiff_t strip = layout.strip, words = RoundUp(layout.strip, kPerWord) / kPerWord,
                       room = RoundUp(static_cast<int>(words), lanes);
  auto* const grouped = reinterpret_cast<std::int32_t*>(buffer);
  auto* const ordered = reinterpret_cast<std::uint32_t*>(grouped + kStrips * room);
  auto largest = hn::Set(whole, maximum);
  for (int y = std::max(top, 0); y < std::min(top + kStep, result.height); ++y) {
    double* in = rows[static_cast<std::size_t>(y - top)];
    // Beyond the plane and the strips there is no maximum.
    for (int x = layout.width; x < layout.Size(); ++x) in[layout.Of(x)] = 0;
    std::fill(in + layout.Size(), in + words * kPerWord * kStrips, 0.0);
    // Neighbouring levels of a strip share a word, and so four groups become one.
    for (std::ptrdiff_t i = 0; i < words; ++i) {
      for (std::ptrdiff_t part = 0; part < kStrips; part += static_cast<int>(hn::Lanes(d))) {
        auto word = hn::Zero(whole);
#pragma GCC unroll 4
        for (std::ptrdiff_t column = kPerWord - 1; column >= 0; --column) {
          const auto level = hn::DemoteTo(whole, hn::Load(d, in + (i * kPerWord + column) * kStrips + part));
          largest = hn::Max(largest, level);
          word = hn::Or(hn::ShiftLeft<8>(word), level);
        }
        hn::Store(word, whole, grouped + i * kStrips + part);
      }
    }
    // A group of words is taken apart into four pairs, and these into strips.
    for (std::ptrdiff_t i = 0; i < words; i += lanes) {
      hn::Vec<decltype(twoWords)> pairs[kStrips / 2];
      hn::LoadInterleaved4(twoWords, reinterpret_cast<const std::uint64_t*>(grouped + i * kStrips), pairs[0], pairs[1],
                           pairs[2], pairs[3]);
      std::uint32_t* to = ordered + i;
      for (const auto& two : pairs) {
        for (const auto& one : {two, hn::ShiftRight<32>(two)}) {
          hn::Store(hn::TruncateTo(oneWord, one), oneWord, to);
          to += room;
        }
      }
    }
    for (int i = 0; i < kStrips; ++i)
      std::copy_n(reinterpret_cast<const std::uint8_t*>(ordered + i * room),
                  std::clamp<std::ptrdiff_t>(layout.width - i * strip, 0, strip), result.Row(y) + i * strip);
  }
  maximum = std::max(maximum, hn::GetLane(hn::MaxOfLanes(whole, largest)));
}

/// A single pass needs no doubles: a whole number divided by 9 and truncated gives the same result in whole numbers.
void SmoothOnce(SmoothJob& job, const FirstPass& first) {
  const Sums d;
  const hn::RebindToSigned<Sums> toDemote;  // levels never reach the sign bit
  const hn::Rebind<std::uint8_t, Sums> narrow;
  // 7282 is 65536 / 9 rounded up; for sums of up to 9 * 255 the error does not reach the next whole number.
  const auto ninth = hn::Set(d, 7282);
  const int width = job.original.width, height = job.original.height, lanes = static_cast<int>(hn::Lanes(d));
  auto largest = hn::Zero(d);
  int maximum = -1;
  for (int y = 0; y < height; ++y) {
    const std::uint16_t* columns = first.ColumnSums(y);
    std::uint8_t* out = job.smoothed.Row(y);
    const bool bottom = y == height - 1;
    int x = 0;
    for (; x + lanes <= width && !bottom; x += lanes) {
      const auto levels = hn::MulHigh(AcrossColumns(d, columns + x), ninth);
      largest = hn::Max(largest, levels);
      hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(toDemote, levels)), narrow, out + x);
    }
    for (; x < width; ++x) {
      const bool corner = bottom && (x == 0 || x == width - 1);
      const int sum = corner ? first.BottomCornerSum(x) : columns[x - 1] + columns[x] + columns[x + 1];
      out[x] = static_cast<std::uint8_t>(sum / 9);
      maximum = std::max<int>(maximum, out[x]);
    }
  }
  job.maximum = std::max<int>(maximum, hn::GetLane(hn::MaxOfLanes(d, largest)));
}

/// How many 16-bit values a row of sums takes, in groups, or a row of levels in groups and one in strips. The strips
/// are filled up to whole vectors.
inline std::size_t SpaceOf(const RowLayout& layout) {
  const int unit = std::max(static_cast<int>(hn::Lanes(Sums())), kPerWord);
  return std::size_t{kStrips} * static_cast<std::size_t>(RoundUp(layout.strip, unit));
}

/// Two passes or more.
template <class Ninth>
void SmoothRepeatedly(SmoothJob& job, const FirstPass& first, int level, Ninth ninth) {
  const RowLayout layout(job.original.width);
  const int height = job.original.height;

  const std::size_t repeats = static_cast<std::size_t>(level) - 1;
  // During a step a row moves to the left by a group per pass. On its right Truncate fills it up to whole words.
  const std::size_t moved = repeats * kStrips;
  std::size_t stride = static_cast<std::size_t>(layout.Size() + (2 + kPerWord - 1) * kStrips) + moved;
  while (stride % kPage != kRowOffset) stride += kStrips;
  const std::size_t rowCount = 2 * repeats + kStep;
  const auto memory = hwy::AllocateAligned<double>(rowCount * stride);
  if (!memory) throw std::bad_alloc();
  std::fill_n(memory.get(), rowCount * stride, 0.0);
  double* nextRow = memory.get() + kStrips;
  const auto takeRow = [&] { return std::exchange(nextRow, nextRow + stride); };

  const auto buffer = hwy::AllocateAligned<std::uint16_t>(SpaceOf(layout));
  if (!buffer) throw std::bad_alloc();

  Rows<kStep> made;
  for (double*& row : made) row = takeRow();
  std::vector<Rows<2>> kept(repeats);
  for (std::size_t pass = 0; pass < repeats; ++pass)
    for (double*& row : kept[pass]) row = takeRow() + moved - pass * kStrips;

  job.maximum = -1;
  for (int front = 0; front - level + 1 < height; front += kStep) {
    for (double*& row : made) row += moved;
    if (front < height) FirstStep(first, made, front, layout, height, buffer.get(), ninth);
    int top = front;
    for (Rows<2>& before : kept) {
      --top;
      const Rows<kStep + 2> in{before[0], before[1], made[0], made[1], made[2], made[3]};
      for (std::size_t i = 0; i < kStep; ++i) made[i] = in[i] - kStrips;
      PassStep(in, made, top, layout, height, ninth);
      before = {in[kStep], in[kStep + 1]};
    }
    Truncate(made, job.smoothed, top, layout, buffer.get(), job.maximum);
  }
}

void SmoothPlane(SmoothJob& job, int level) {
  const int width = job.original.width;
  constexpr int kLineOfSums = 64 / sizeof(std::uint16_t);
  const int room = RoundUp(width, kLineOfSums) + 2 * kLineOfSums;
  const auto columns = hwy::AllocateAligned<std::uint16_t>(static_cast<std::size_t>(room));
  if (!columns) throw std::bad_alloc();
  std::fill_n(columns.get(), room, std::uint16_t{0});
  const FirstPass first(job.original, columns.get() + kLineOfSums);
  if (level == 1)
    SmoothOnce(job, first);
  else if (level <= kMaximumLevelOfSplitNinth)
    SmoothRepeatedly(job, first, level, SplitNinth());  // NOLINT(bugprone-branch-clone): PlainNinth on some targets
  else
    SmoothRepeatedly(job, first, level, PlainNinth());
}

}  // namespace HWY_NAMESPACE
}  // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace {
HWY_EXPORT(SmoothPlane);
}

void SmoothPlanes(std::span<SmoothJob> jobs, int level) {
  assert(level >= 1);
  platform::ParallelFor(static_cast<int>(jobs.size()), [&](int i) {
    SmoothJob& job = jobs[static_cast<std::size_t>(i)];
    // The first and last row and column read the one next to them.
    if (job.original.width < 2) platform::ThrowOutOfBounds("plane", 1, job.original.width - 1);
    if (job.original.height < 2) platform::ThrowOutOfBounds("plane", 1, job.original.height - 1);
    HWY_DYNAMIC_DISPATCH(SmoothPlane)(job, level);
  });
}
#endif
