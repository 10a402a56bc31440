#include <gtest/gtest.h>

#include "platform/values/Array.h"
#include "platform/values/Numbers.h"
#include "platform/values/Ref.h"
#include "platform/values/String.h"

namespace platform {
namespace {

TEST(Array, KeepsWhatStaysInRange) {
  Array<int> values{1, 2, 3};
  values.Redim(4);
  EXPECT_EQ(values(2), 3);
  values.Redim(0);
  values.Redim(2);
  EXPECT_EQ(values(0), 1);
  EXPECT_EQ(values(2), 0) << "an entry that went out of range comes back with its start value";
  values.Redim(-1);
  EXPECT_TRUE(values.Empty());
  EXPECT_THROW(values.Redim(-2), OutOfBoundsException);
}

TEST(Array, AppendsRemovesAndFinds) {
  Array<String> names;
  for (const char* name : {"Si", "fe", "Mg", "Fe"}) names.Append(name);
  EXPECT_EQ(names.IndexOf("FE"), 1);
  names.Sort();
  names.Remove(2);
  EXPECT_TRUE(names.Pop().Identical("Si"));
  EXPECT_TRUE(Join(names, " ").Identical("fe Fe")) << "equal names keep their order";
}

TEST(Array, ThrowsOnABadIndex) {
  Array<int> values(1);
  for (const int bad : {2, -1}) EXPECT_THROW(values(bad), OutOfBoundsException);
  EXPECT_THROW(values.Remove(2), OutOfBoundsException);
  EXPECT_THROW(Array<int>().Pop(), OutOfBoundsException);
  Array3<int> stack(1, 2, 3);
  for (const auto& [x, y] : {std::pair{3, 0}, {0, -1}}) EXPECT_THROW(stack(0, x, y), OutOfBoundsException);
  EXPECT_THROW(stack.Ubound(4), OutOfBoundsException);
}

TEST(Array, ResizesEveryDimension) {
  Array3<int> stack(1, 2, 3);
  for (int i = 0; i <= 1; ++i)
    for (int x = 0; x <= 2; ++x)
      for (int y = 0; y <= 3; ++y) stack(i, x, y) = 1 + 100 * i + 10 * x + y;
  stack.Redim(2, 1, 4);
  for (int i = 0; i <= 2; ++i)
    for (int x = 0; x <= 1; ++x)
      for (int y = 0; y <= 4; ++y) EXPECT_EQ(stack(i, x, y), i <= 1 && y <= 3 ? 1 + 100 * i + 10 * x + y : 0);
  stack.Redim(2, -1, 4);
  EXPECT_THROW(stack(0, 0, 0), OutOfBoundsException);
}

TEST(Ref, ThrowsWhenNilIsUsed) { EXPECT_THROW(Ref<Array<int>>()->Ubound(), NilObjectException); }

TEST(Numbers, HaveAResultForEveryDouble) {
  EXPECT_EQ(ToInt32(-2.9), -2);
  EXPECT_EQ(ToInt32(1e10), 2147483647);
  EXPECT_EQ(ToInt32(-1e300), -2147483647 - 1);
  EXPECT_EQ(ToInt32(std::nan("")), 0);
  EXPECT_EQ(Round(-2.5), -2.0);
  EXPECT_EQ(Round(0.49999999999999994), 0.0);
}

}  // namespace
}  // namespace platform
