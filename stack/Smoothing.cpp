#include "stack/Smoothing.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include "platform/values/Errors.h"
#include "platform/values/Parallel.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stack/Smoothing.cpp"
#include <hwy/foreach_target.h>
// The order matters: foreach_target.h comes first.
#include <hwy/aligned_allocator.h>
#include <hwy/highway.h>

#ifndef VORNALITE_SMOOTHING_ONCE
#define VORNALITE_SMOOTHING_ONCE

namespace {

// All passes move down the plane together, four rows per step. A pass reads the four rows that the previous pass has
// just computed and the two rows above these, which it has kept, and computes four rows, one row higher up. So a step
// works in the L1 cache, and only two rows per pass are kept between steps.
//
// The order of additions determines the bits of the result. A value is the sum of its left, middle and right column,
// each summed from top to bottom in doubles, added in that order. Only the first pass may add in another order, because
// its sums are whole numbers.

constexpr int kStep = 4;
/// Doubles of one cache line.
constexpr int kLine = 8;
/// Above this level values may be so small that the product with the second part of 1/9 is subnormal.
constexpr int kMaximumLevelOfSplitNinth = 300;

constexpr int RoundUp(int value, int unit) { return (value + unit - 1) / unit * unit; }

/// Rows of a block, from top to bottom. Each begins on a cache line and has a spare line on both sides, so that whole
/// vectors may be read one column to the left, one to the right and past the end.
template <int count>
using Rows = std::array<double*, count>;

}  // namespace

#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// Four doubles at most. With eight, two of three loads would cross a cache line, which costs what the width gains;
/// only the InteriorRows for eight doubles avoids that.
using Doubles = hn::CappedTag<double, 4>;
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

#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL

using Line = hn::Vec<hn::FixedTag<double, kLine>>;

/// Eight consecutive values from two lines, beginning at the given position of the first one.
template <int position>
Line Between(Line first, Line second) {
  return Line{_mm512_castsi512_pd(
      _mm512_alignr_epi64(_mm512_castpd_si512(second.raw), _mm512_castpd_si512(first.raw), position))};
}

/// Four rows of the interior, without the first and last column. `in` begins one row above them. Each line is loaded
/// once, and the neighbours to the left and right are combined from two lines: a load that crosses a line costs twice
/// as much.
template <class Ninth>
void InteriorRows(const Rows<kStep + 2>& in, const Rows<kStep>& out, int width, Ninth ninth) {
  const hn::DFromV<Line> d;
  const Line one = hn::Set(d, 1.0);
  // Half of the sums use the multiply-add units, with identical bits: on some processors these work in parallel to the
  // adders.
  const auto add = [&](std::size_t row, Line a, Line b) { return row % 2 ? hn::MulAdd(a, one, b) : hn::Add(a, b); };
  constexpr std::size_t kRead = kStep + 2;
  Line before[kRead], here[kRead], side[kRead], sums[kStep];
#pragma GCC unroll 6
  for (std::size_t row = 0; row < kRead; ++row) {
    before[row] = hn::Load(d, in[row] - kLine);
    here[row] = hn::Load(d, in[row]);
  }
  for (int x = 0; x < width; x += kLine) {
#pragma GCC unroll 6
    for (std::size_t row = 0; row < kRead; ++row) {
      side[row] = Between<kLine - 1>(before[row], here[row]);
      before[row] = here[row];
    }
#pragma GCC unroll 4
    for (std::size_t row = 0; row < kStep; ++row) {
      sums[row] = add(row, add(row, side[row], side[row + 1]), side[row + 2]);
      sums[row] = add(row, add(row, add(row, sums[row], here[row]), here[row + 1]), here[row + 2]);
    }
#pragma GCC unroll 6
    for (std::size_t row = 0; row < kRead; ++row) {
      here[row] = hn::Load(d, in[row] + x + kLine);
      side[row] = Between<1>(before[row], here[row]);
    }
#pragma GCC unroll 4
    for (std::size_t row = 0; row < kStep; ++row) {
      sums[row] = add(row, add(row, add(row, sums[row], side[row]), side[row + 1]), side[row + 2]);
      hn::Store(ninth(sums[row]), d, out[row] + x);
    }
  }
}

#else

/// Four rows of the interior, without the first and last column. `in` begins one row above them.
template <class Ninth>
void InteriorRows(const Rows<kStep + 2>& in, const Rows<kStep>& out, int width, Ninth ninth) {
  const Doubles d;
  for (int x = 0; x < width; x += static_cast<int>(hn::Lanes(d))) {
    V sum0, sum1, sum2, sum3;
    {
      const V a = hn::LoadU(d, in[0] + x - 1), b = hn::LoadU(d, in[1] + x - 1), c = hn::LoadU(d, in[2] + x - 1);
      const V e = hn::LoadU(d, in[3] + x - 1), f = hn::LoadU(d, in[4] + x - 1), g = hn::LoadU(d, in[5] + x - 1);
      sum0 = hn::Add(hn::Add(a, b), c);
      sum1 = hn::Add(hn::Add(b, c), e);
      sum2 = hn::Add(hn::Add(c, e), f);
      sum3 = hn::Add(hn::Add(e, f), g);
    }
    for (int column = 0; column < 2; ++column) {
      const V a = hn::LoadU(d, in[0] + x + column), b = hn::LoadU(d, in[1] + x + column);
      const V c = hn::LoadU(d, in[2] + x + column), e = hn::LoadU(d, in[3] + x + column);
      const V f = hn::LoadU(d, in[4] + x + column), g = hn::LoadU(d, in[5] + x + column);
      sum0 = hn::Add(hn::Add(hn::Add(sum0, a), b), c);
      sum1 = hn::Add(hn::Add(hn::Add(sum1, b), c), e);
      sum2 = hn::Add(hn::Add(hn::Add(sum2, c), e), f);
      sum3 = hn::Add(hn::Add(hn::Add(sum3, e), f), g);
    }
    hn::Store(ninth(sum0), d, out[0] + x);
    hn::Store(ninth(sum1), d, out[1] + x);
    hn::Store(ninth(sum2), d, out[2] + x);
    hn::Store(ninth(sum3), d, out[3] + x);
  }
}

#endif

template <class Ninth>
void InteriorRow(const double* above, const double* here, const double* below, double* out, int width, Ninth ninth) {
  const Doubles d;
  for (int x = 0; x < width; x += static_cast<int>(hn::Lanes(d))) {
    V sum = hn::Add(hn::Add(hn::LoadU(d, above + x - 1), hn::LoadU(d, here + x - 1)), hn::LoadU(d, below + x - 1));
    for (int column = 0; column < 2; ++column) {
      sum = hn::Add(sum, hn::LoadU(d, above + x + column));
      sum = hn::Add(sum, hn::LoadU(d, here + x + column));
      sum = hn::Add(sum, hn::LoadU(d, below + x + column));
    }
    hn::Store(ninth(sum), d, out + x);
  }
}

/// The top or bottom row without its corners: row `twice` counts twice, row `once` once.
template <class Ninth>
void EdgeRow(const double* twice, const double* once, double* out, int width, Ninth ninth) {
  const Doubles d;
  const V two = hn::Set(d, 2.0);
  for (int x = 0; x < width; x += static_cast<int>(hn::Lanes(d))) {
    V sum = hn::Add(hn::Mul(two, hn::LoadU(d, twice + x - 1)), hn::LoadU(d, once + x - 1));
    for (int column = 0; column < 2; ++column) {
      sum = hn::Add(sum, hn::Mul(two, hn::LoadU(d, twice + x + column)));
      sum = hn::Add(sum, hn::LoadU(d, once + x + column));
    }
    hn::Store(ninth(sum), d, out + x);
  }
}

/// First and last value of an interior row. The left column of the sum comes first at both ends.
inline void RowEnds(const double* above, const double* here, const double* below, double* out, int last) {
  out[0] = (2.0 * above[0] + 2.0 * here[0] + 2.0 * below[0] + above[1] + here[1] + below[1]) / 9.0;
  out[last] =
      (above[last - 1] + here[last - 1] + below[last - 1] + 2.0 * above[last] + 2.0 * here[last] + 2.0 * below[last]) /
      9.0;
}

/// Both corners of the edge row `here`; `inner` is the row next to it.
inline void Corners(const double* here, const double* inner, double* out, int last) {
  out[0] = (4.0 * here[0] + 2.0 * here[1] + 2.0 * inner[0] + inner[1]) / 9.0;
  out[last] = (4.0 * here[last] + 2.0 * here[last - 1] + 2.0 * inner[last] + inner[last - 1]) / 9.0;
}

/// One pass: computes four rows from `top` on, those that are in the plane. `in` begins one row above them.
template <class Ninth>
void PassStep(const Rows<kStep + 2>& in, const Rows<kStep>& out, int top, int width, int height, Ninth ninth) {
  const int last = width - 1;
  const bool allInterior = top > 0 && top + kStep < height;
  if (allInterior) InteriorRows(in, out, width, ninth);
  for (std::size_t i = 0; i < kStep; ++i) {
    const int y = top + static_cast<int>(i);
    const double *above = in[i], *here = in[i + 1], *below = in[i + 2];
    if (y == 0) {
      EdgeRow(here, below, out[i], width, ninth);
      Corners(here, below, out[i], last);
    } else if (y == height - 1) {
      EdgeRow(above, here, out[i], width, ninth);
      Corners(here, above, out[i], last);
    } else if (y > 0 && y < height) {
      if (!allInterior) InteriorRow(above, here, below, out[i], width, ninth);
      RowEnds(above, here, below, out[i], last);
    }
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

/// First pass: computes four rows from `top` on, those that are in the plane.
template <class Ninth>
void FirstStep(const FirstPass& first, const Rows<kStep>& out, int top, int width, int height, Ninth ninth) {
  const Doubles d;
  const hn::Rebind<std::int32_t, Doubles> whole;
  const hn::Rebind<std::uint16_t, Doubles> narrow;
  for (int y = top; y < std::min(top + kStep, height); ++y) {
    const std::uint16_t* columns = first.ColumnSums(y);
    double* row = out[static_cast<std::size_t>(y - top)];
    for (int x = 0; x < width; x += static_cast<int>(hn::Lanes(d))) {
      const auto sum = hn::PromoteTo(whole, AcrossColumns(narrow, columns + x));
      hn::Store(ninth(hn::PromoteTo(d, sum)), d, row + x);
    }
    if (y == height - 1) {
      row[0] = first.BottomCornerSum(0) / 9.0;
      row[width - 1] = first.BottomCornerSum(width - 1) / 9.0;
    }
  }
}

/// Truncates the rows from `top` on, those that are in the plane, into the result, and raises `maximum` to their
/// largest level.
void Truncate(const Rows<kStep>& rows, platform::PlaneView<std::uint8_t> result, int top, int& maximum) {
  const Doubles d;
  const hn::Rebind<std::int32_t, Doubles> whole;
  const hn::Rebind<std::uint8_t, Doubles> narrow;
  const int lanes = static_cast<int>(hn::Lanes(d));
  auto largest = hn::Set(whole, maximum);
  for (int y = std::max(top, 0); y < std::min(top + kStep, result.height); ++y) {
    const double* in = rows[static_cast<std::size_t>(y - top)];
    std::uint8_t* out = result.Row(y);
    int x = 0;
    for (; x + lanes <= result.width; x += lanes) {
      const auto levels = hn::DemoteTo(whole, hn::Load(d, in + x));
      largest = hn::Max(largest, levels);
      hn::StoreU(hn::DemoteTo(narrow, levels), narrow, out + x);
    }
    for (; x < result.width; ++x) {
      out[x] = static_cast<std::uint8_t>(in[x]);
      maximum = std::max<int>(maximum, out[x]);
    }
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

/// Two passes or more.
template <class Ninth>
void SmoothRepeatedly(SmoothJob& job, const FirstPass& first, int level, Ninth ninth) {
  const int width = job.original.width, height = job.original.height;

  // Rows a multiple of 4 KB apart would map to the same cache set.
  std::size_t stride = static_cast<std::size_t>(RoundUp(width, kLine)) + std::size_t{2} * kLine;
  if (stride % 512 == 0) stride += kLine;
  const std::size_t repeats = static_cast<std::size_t>(level) - 1;
  const std::size_t rowCount = 2 * (repeats + kStep);
  const auto memory = hwy::AllocateAligned<double>(rowCount * stride);
  if (!memory) throw std::bad_alloc();
  std::fill_n(memory.get(), rowCount * stride, 0.0);
  double* nextRow = memory.get() + kLine;
  const auto takeRow = [&] { return std::exchange(nextRow, nextRow + stride); };

  Rows<kStep> made, spare;
  for (double*& row : made) row = takeRow();
  for (double*& row : spare) row = takeRow();
  std::vector<Rows<2>> kept(repeats);
  for (Rows<2>& rows : kept) rows = {takeRow(), takeRow()};

  job.maximum = -1;
  for (int front = 0; front - level + 1 < height; front += kStep) {
    if (front < height) FirstStep(first, made, front, width, height, ninth);
    int top = front;
    for (Rows<2>& before : kept) {
      --top;
      PassStep({before[0], before[1], made[0], made[1], made[2], made[3]}, spare, top, width, height, ninth);
      // The next pass writes to the rows just read, except the last two.
      const Rows<kStep> read{before[0], before[1], made[0], made[1]};
      before = {made[2], made[3]};
      made = std::exchange(spare, read);
    }
    Truncate(made, job.smoothed, top, job.maximum);
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
