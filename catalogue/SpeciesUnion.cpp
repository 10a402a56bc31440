#include "catalogue/SpeciesUnion.h"

#include <map>

using platform::Array;
using platform::String;

SpeciesUnion UniteSpecies(const std::vector<Array<String>>& clusters) {
  // Strings compare regardless of letter case, so the first spelling of a name stays.
  std::map<String, int> indices;
  for (const Array<String>& cluster : clusters)
    for (const String& name : cluster) indices.emplace(name, 0);

  SpeciesUnion united;
  for (auto& [name, index] : indices) {
    united.names.Append(name);
    index = united.names.Ubound();
  }

  united.exist.Redim(static_cast<int>(clusters.size()) - 1, united.names.Ubound());
  for (int row = 0; row < static_cast<int>(clusters.size()); ++row) {
    int held = 0;
    for (const String& name : clusters[static_cast<std::size_t>(row)]) {
      if (name.Empty()) continue;
      bool& exists = united.exist(row, indices.at(name));
      if (!exists) ++held;
      exists = true;
    }
    if (held <= united.names.Ubound()) united.allPresent = false;
  }
  return united;
}
