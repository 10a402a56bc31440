#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <vector>

#include "catalogue/SpeciesNames.h"
#include "catalogue/SpeciesNamesMessages.h"
#include "tests/support/Messages.h"

using platform::Array;
using platform::String;
using Names = Array<String>;

namespace {

std::string Text(const Names& names) { return platform::Join(names, "|").Utf8(); }

using SpeciesNames = MessagesTest;

struct Case {
  Names names;
  const char* shorts;
  const char* common;
};

}  // namespace

TEST_F(SpeciesNames, StripsWhatNamesHaveInCommon) {
  const Case cases[] = {
      {{"map_Fe.tif", "map_Mg.tif", "map_Si.tif"}, "Fe|Mg|Si", "map_tif"},
      {{"MAP_Fe", "map_Mg"}, "Fe|Mg", "MAP"},
      {{"Fe", "Mg"}, "Fe|Mg", "?"},
      {{"map_Fe.tif", "map_F.tif"}, "e|?", "map_F_tif"},
      {{"Fe map.tif"}, "Fe_map_tif", "Fe_map_tif"},
      {{"x.tif", "X.tif", "y.tif"}, "x_tif|X_tif|y_tif", "x_tif"},
      {{"Fe.tif", "Mg.png"}, "Fe_tif|Mg_png", "?"},
      {{"Ca", "C"}, "a|?", "C"},          // the scan from the back continues beyond the short name: C and a differ
      {{"aaXaa", "aaa"}, "X|?", "aaaa"},  // front and back overlap in the short name
      {{"run Fe x", "run   x"}, "Fe|?", "run_x"},  // a single blank counts as empty
      {{"", "a"}, "?|a", "?"},
      {{"x.", "x,Fe"}, "|_Fe", "x"},
      {{"Ä1", "ä2"}, "1|2", "Ä"},
  };
  for (const Case& c : cases) {
    Names shorts(c.names.Ubound());
    const String common = Globals::ShortNames(c.names, shorts);
    EXPECT_EQ(Text(shorts), c.shorts) << Text(c.names);
    EXPECT_EQ(common.Utf8(), c.common) << Text(c.names);
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(SpeciesNames, ArraysOfDifferentSizeAreReportedAndLeftAlone) {
  Names shorts{"kept"};
  EXPECT_EQ(Globals::ShortNames({"a b", "c"}, shorts).Utf8(), "a_b");
  EXPECT_EQ(Text(shorts), "kept");
  EXPECT_EQ(messages, std::vector<std::string>{"Error in ShortNames Function."});
  EXPECT_THROW(Globals::ShortNames({}, shorts), platform::OutOfBoundsException);
}

// They are still being scanned when the alarm ends the process.
TEST_F(SpeciesNames, NamesThatNeverDifferAreScannedForEver) {
  const auto scan = [](const Names& names) {
    Names shorts(names.Ubound());
    ualarm(200'000, 0);
    StripCommon(names, shorts);
  };
  for (const Names& names : {Names{"Mg", "Mgg"}, Names{"ab", "aab"}})  // in front, at the back
    EXPECT_EXIT(scan(names), testing::KilledBySignal(SIGALRM), "") << Text(names);
}

TEST_F(SpeciesNames, RemovesOneKnownExtensionAndKeepsTheAllowedCharacters) {
  for (const auto& [name, stem] :
       {std::pair{"a.tif.png", "a.tif"}, {"MAP.XRay", "MAP"}, {"a.gif", "a.gif"}, {"tif", "tif"}, {".tif", ""}})
    EXPECT_EQ(Globals::RemoveExtension(name).Utf8(), stem);
  for (const auto& [name, clean] : {std::pair{"", "?"},
                                    {".", ""},
                                    {"a b.c", "a_b_c"},
                                    {"_a__b_", "_a_b"},
                                    {"/:\\,=*'\"|;Fe", "_Fe"},
                                    {"-+()[]{}&%$#@!?<>^~äÖßµ09é€x", "-+()[]{}&%$#@!?<>^~äÖßµ09_x"}})
    EXPECT_EQ(Globals::CleanString(name).Utf8(), clean);
}

TEST_F(SpeciesNames, RemovesSuffixes) {
  Names names{"Fe_1", "Al27", "C12_3", "Si_28", "Mg123", "12", "7", "_x", "a_x", "Fe+", ""};
  RemoveSuffixes(names);
  EXPECT_EQ(Text(names), "Fe|Al|C|Si_|Mg1|1|7|_x|a|Fe+|");
}

// A quadratic step would exceed the time limit of a test.
TEST_F(SpeciesNames, ManyLongNamesAreQuick) {
  Names names;
  for (int i = 0; i < 100000; ++i)
    names.Append(String("a rather long name of a field of view, run 7, map ") + platform::Str(100000 + i) + ".tif");
  Names shorts(names.Ubound());
  // All numbers begin with "1", and the last digits differ.
  EXPECT_EQ(StripCommon(names, shorts).Utf8(), "a_rather_long_name_of_a_field_of_view_run_7_map_1_tif");
  EXPECT_EQ(shorts(99999).Utf8(), "99999");
}
