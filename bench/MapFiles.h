#pragma once
/// Map files for the benchmarks, and the least that is needed to read them.

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

enum class Compression { None, Lzw };

/// A temporary folder for map files.
class MapFolder {
 public:
  MapFolder();
  ~MapFolder();
  MapFolder(const MapFolder&) = delete;
  std::filesystem::path path;
};

/// Writes one 8-bit grey TIFF a species, <cluster>_<element>.tif, of `size` by `size` pixels, and returns their paths.
/// A map shows grains of different composition, counts with their statistical noise.
std::vector<std::string> WriteCluster(const std::filesystem::path& folder, const std::string& cluster, int species,
                                      int size, Compression compression);

/// Decodes a file with libtiff alone, into memory that the next call reuses.
void DecodeAlone(const std::string& path);

}  // namespace bench
