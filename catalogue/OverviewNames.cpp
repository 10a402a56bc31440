// Derives from the files of the catalogue the species names, their union, and which cluster holds which.

#include <vector>

#include "appcore/Globals.h"
#include "catalogue/MapFile.h"
#include "catalogue/MapFileMessages.h"
#include "catalogue/SpeciesNames.h"
#include "catalogue/SpeciesNamesMessages.h"
#include "catalogue/SpeciesUnion.h"
#include "catalogue/WindowOverview.h"

using namespace platform;

void WindowOverview::NoUnderscoreExtensions(Array<String>& names) { RemoveSuffixes(names); }

Array<String> WindowOverview::SpeciesOfCluster(int row) {
  const auto& files = Globals::ooo;
  Array<String> shorts;
  if (Globals::IsXrayFile(files(row, 0))) {
    Ref<BinaryStream> stream = files(row, 0)->OpenAsBinaryFile(false);
    if (!stream)
      ThrowNil((files(row, 0)->Path().string() + " cannot be opened: " + files(row, 0)->WhyNotReadable().Utf8() +
                ". Put the file back or delete its row.")
                   .c_str());
    const std::int32_t count = Globals::ReadXrayGetNbImages(stream, false);
    for (std::int32_t i = 1; i <= count; ++i) shorts.Append(Globals::ReadXrayGetImageName(stream, i));
    stream->Close();
  } else {
    Array<String> names;
    for (int c = 0; c <= files.Ubound(2); ++c)
      if (files(row, c)) names.Append(files(row, c)->DisplayName());
    shorts.Redim(names.Ubound());
    Globals::ShortNames(names, shorts);
  }
  return shorts;
}

void WindowOverview::UpdateShortNames() {
  const int last = Globals::ooo.Ubound(1);
  bool nothingToStrip = true;
  std::vector<Array<String>> clusters;
  for (int row = 0; row <= last; ++row) {
    Array<String> shorts = SpeciesOfCluster(row);
    Array<String> stripped = shorts;
    NoUnderscoreExtensions(stripped);
    for (int i = 0; i <= shorts.Ubound(); ++i)
      if (stripped(i) != shorts(i)) nothingToStrip = false;
    clusters.push_back(CBnoSpeciesExtensions.Value() ? stripped : shorts);
  }
  // The box is disabled if it would change nothing; its check mark stays.
  CBnoSpeciesExtensions.Enabled(!nothingToStrip);

  SpeciesUnion species = UniteSpecies(clusters);
  const String joined = Join(species.names, ", ");
  for (int row = 0; row <= last; ++row) {
    ListBox1.Cell(row, kSpecies, joined);
    Globals::FileDropCount += 1;
    ListBox1.Cell(row, kNumber, Str(Globals::FileDropCount));
  }
  Globals::oooSpeciesExist = std::move(species.exist);
  Globals::oooShortSpeciesNames = species.names;
  STredmissing.Visible(!species.allPresent);
  // The species cells are painted from the tables, not from their text, which may not have changed.
  ListBox1.InvalidateCell(-1, kSpecies);
}
