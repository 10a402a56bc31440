#include <gtest/gtest.h>

#include "output/NumberedNames.h"

TEST(PictureNames, AreMadeOfClusterSpeciesAndNumber) {
  EXPECT_EQ(SpeciesFileName("run 7.1", "?").Utf8(), "run_7_1_(?).png");
  EXPECT_EQ(CompositeFileName("run7", "Fe", "_", "Si").Utf8(), "run7_(Fe+_+Si).png");
  EXPECT_EQ(NumberedName("a.b.png", 2).Utf8(), "a.b_02.png");
  EXPECT_EQ(NumberedName("a", 99).Utf8(), "a_99");
  EXPECT_EQ(NumberedName(".png", 7).Utf8(), "_07.png");
  EXPECT_EQ(NumberedName("ä.", 100).Utf8(), "ä_100.");
}
