#pragma once
/// All species of the catalogue, and which clusters hold them.

#include <vector>

#include "platform/values/Array.h"
#include "platform/values/String.h"

struct SpeciesUnion {
  platform::Array<platform::String> names;  ///< ascending, each name once, in its first spelling
  platform::Array2<bool> exist;             ///< cluster, position in names
  bool allPresent = true;                   ///< every cluster holds every name
};

/// Unites the short names of the clusters. An empty name is part of the union, but no cluster holds it.
SpeciesUnion UniteSpecies(const std::vector<platform::Array<platform::String>>& clusters);
