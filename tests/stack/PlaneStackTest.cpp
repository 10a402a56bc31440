#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "platform/values/Errors.h"
#include "stack/PlaneStack.h"

namespace {

TEST(PlaneStack, KeepsWhatStaysInRangeAndZeroesTheRest) {
  PlaneStack stack;
  EXPECT_EQ(stack.Ubound(1), -1);
  EXPECT_EQ(stack.Ubound(2), -1);
  stack.Redim(1, 4, 2);
  const auto value = [](int s, int x, int y) { return 100 * s + 10 * x + y + 1; };  // below 256
  for (int s = 0; s <= 1; ++s)
    for (int x = 0; x <= 4; ++x)
      for (int y = 0; y <= 2; ++y) stack(s, x, y) = value(s, x, y);

  // Narrower, taller and of more species at once, then back: what was cut off is gone.
  stack.Redim(2, 2, 6);
  for (int s = 0; s <= 2; ++s)
    for (int x = 0; x <= 2; ++x)
      for (int y = 0; y <= 6; ++y) ASSERT_EQ(stack(s, x, y), s <= 1 && y <= 2 ? value(s, x, y) : 0);
  stack.Redim(0, 4, 2);
  EXPECT_EQ(stack.Ubound(1), 0);
  EXPECT_EQ(stack(0, 2, 2), value(0, 2, 2));
  EXPECT_EQ(stack(0, 3, 2), 0);

  stack.Redim(1, 4, 2);
  EXPECT_EQ(stack(1, 0, 0), 0) << "a species that was removed and added again is zero";
  stack.Redim(1, -1, 2);
  EXPECT_EQ(stack.Ubound(2), -1);
  EXPECT_THROW(stack(0, 0, 0), platform::OutOfBoundsException);
}

TEST(PlaneStack, LeavesThePagesOfAnAbsentSpeciesUntouched) {
  PlaneStack stack;
  stack.Redim(0, 4000, 8191);
  stack.Redim(0, 4095, 8191);
  const auto plane = stack.Plane(0);
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const auto first = (reinterpret_cast<std::uintptr_t>(plane.data) + page - 1) / page * page;
  std::vector<unsigned char> resident(std::size_t{32} * 1024 * 1024 / page - 1);
  ASSERT_EQ(mincore(reinterpret_cast<void*>(first), resident.size() * page, resident.data()), 0);
  EXPECT_LT(std::count_if(resident.begin(), resident.end(), [](unsigned char in) { return in & 1; }), 1024);
}

}  // namespace
