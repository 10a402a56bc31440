#include <gtest/gtest.h>

#include "catalogue/SpeciesUnion.h"

using platform::Array;
using platform::String;

TEST(SpeciesUnion, UnitesSortsAndRecordsWhichClusterHoldsWhat) {
  const SpeciesUnion united = UniteSpecies({{"Si", "fe", "?", "?"}, {"Al", "FE", ""}, {}});
  EXPECT_EQ(platform::Join(united.names, "|").Utf8(), "|?|Al|fe|Si");
  std::string exist;  // no cluster holds the empty name
  for (int row = 0; row < 3; ++row)
    for (int j = 0; j < 5; ++j) exist += united.exist(row, j) ? '+' : '-';
  EXPECT_EQ(exist, "-+-++--++------");
  EXPECT_FALSE(united.allPresent);
}

TEST(SpeciesUnion, AllPresent) {
  EXPECT_TRUE(UniteSpecies({}).allPresent);
  EXPECT_EQ(UniteSpecies({}).exist.Ubound(1), -1);
  EXPECT_TRUE(UniteSpecies({{"Fe", "Fe", "Mg"}, {"MG", "FE"}}).allPresent);
  EXPECT_FALSE(UniteSpecies({{"Fe", ""}}).allPresent);
}

// A quadratic step would exceed the time limit of a test.
TEST(SpeciesUnion, ManyNamesAreQuick) {
  std::vector<Array<String>> clusters(16);
  for (int i = 0; i < 32767; ++i)
    for (auto& cluster : clusters) cluster.Append(platform::Str(i));
  const SpeciesUnion united = UniteSpecies(clusters);
  EXPECT_EQ(united.names.Ubound(), 32766);
  EXPECT_EQ(united.names(2).Utf8(), "10");
  EXPECT_TRUE(united.allPresent);
}
