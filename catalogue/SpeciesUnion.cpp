#include "catalogue/SpeciesUnion.h"

#include <map>

using platform::Array;
using platform::String;

SpeciesUnion UniteSpecies(const std::vector<Array<String>>& clusters) {
  // Strings compare regardless of letter case, so the first spelling of a name stays.
  std::map<String, int> places;
  for (const Array<String>& cluster : clusters)
    for (const String& name : cluster) places.emplace(name, 0);

  SpeciesUnion united;
  for (auto& [name, place] : places) {
    united.names.Append(name);
    place = united.names.Ubound();
  }

  united.exist.Redim(static_cast<int>(clusters.size()) - 1, united.names.Ubound());
  for (int row = 0; row < static_cast<int>(clusters.size()); ++row) {
    int held = 0;
    for (const String& name : clusters[static_cast<std::size_t>(row)]) {
      if (name.Empty()) continue;
      bool& exists = united.exist(row, places.at(name));
      if (!exists) ++held;
      exists = true;
    }
    if (held <= united.names.Ubound()) united.allPresent = false;
  }
  return united;
}
