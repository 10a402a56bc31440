#include "bench/MapFiles.h"

#include <tiffio.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

namespace bench {

namespace {

/// The counts that give the brightest grey level.
constexpr int kFullScale = 70;

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

void Need(bool done, const std::string& path) {
  if (done) return;
  std::fprintf(stderr, "%s: cannot be written or read\n", path.c_str());
  std::exit(1);
}

/// A grain, and a sample of the levels of its pixels.
struct Grain {
  int x, y;
  std::vector<std::uint8_t> levels;
};

std::vector<std::uint8_t> Map(int size, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<Grain> grains(20);
  for (Grain& grain : grains) {
    grain.x = static_cast<int>(random() % static_cast<unsigned>(size));
    grain.y = static_cast<int>(random() % static_cast<unsigned>(size));
    std::poisson_distribution<int> counts(static_cast<double>(random() % 200 + 10) * kFullScale / 255.0);
    for (int i = 0; i < 4096; ++i)
      grain.levels.push_back(static_cast<std::uint8_t>(std::min(counts(random) * 255 / kFullScale, 255)));
  }
  std::vector<std::uint8_t> levels;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      const auto distance = [&](const Grain& grain) {
        return (grain.x - x) * (grain.x - x) + (grain.y - y) * (grain.y - y);
      };
      const Grain& nearest = *std::min_element(
          grains.begin(), grains.end(), [&](const Grain& a, const Grain& b) { return distance(a) < distance(b); });
      levels.push_back(nearest.levels[random() % nearest.levels.size()]);
    }
  }
  return levels;
}

}  // namespace

MapFolder::MapFolder()
    : path(std::filesystem::temp_directory_path() / ("vornalite-bench-" + std::to_string(::getpid()))) {
  std::filesystem::create_directories(path);
}

MapFolder::~MapFolder() { std::filesystem::remove_all(path); }

std::vector<std::string> WriteCluster(const std::filesystem::path& folder, const std::string& cluster, int species,
                                      int size, Compression compression) {
  static const char* const elements[] = {"Ag", "Al", "Ar", "As", "Au", "B",  "Ba", "Be", "Bi", "Br", "C",  "Ca",
                                         "Cd", "Ce", "Cl", "Co", "Cr", "Cs", "Cu", "Dy", "Er", "Eu", "F",  "Fe",
                                         "Ga", "Gd", "Ge", "H",  "He", "Hf", "Hg", "Ho", "I",  "In", "Ir", "K",
                                         "Kr", "La", "Li", "Lu", "Mg", "Mn", "Mo", "N",  "Na", "Nb", "Nd", "Ne",
                                         "Ni", "O",  "Os", "P",  "Pb", "Pd", "Pr", "Pt", "Rb", "Rh", "Ru", "S"};
  std::vector<std::string> paths;
  for (int i = 0; i < species; ++i) {
    paths.push_back(folder / (cluster + "_" + elements[i] + ".tif"));
    std::vector<std::uint8_t> levels = Map(size, static_cast<unsigned>(i + 1));
    const Tiff tiff(TIFFOpen(paths.back().c_str(), "w"), TIFFClose);
    Need(tiff != nullptr, paths.back());
    TIFFSetField(tiff.get(), TIFFTAG_IMAGEWIDTH, size);
    TIFFSetField(tiff.get(), TIFFTAG_IMAGELENGTH, size);
    TIFFSetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff.get(), TIFFTAG_COMPRESSION, compression == Compression::Lzw ? COMPRESSION_LZW : COMPRESSION_NONE);
    TIFFSetField(tiff.get(), TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff.get(), 0));
    for (int y = 0; y < size; ++y)
      Need(TIFFWriteScanline(tiff.get(), levels.data() + static_cast<std::size_t>(y) * size, y, 0) == 1, paths.back());
  }
  return paths;
}

void DecodeAlone(const std::string& path) {
  static std::vector<std::uint8_t> levels;
  const Tiff tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
  Need(tiff != nullptr, path);
  std::uint32_t width = 0, height = 0;
  TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
  levels.resize(std::size_t{width} * height);
  tmsize_t done = 0;
  for (std::uint32_t strip = 0; strip < TIFFNumberOfStrips(tiff.get()); ++strip)
    done += TIFFReadEncodedStrip(tiff.get(), strip, levels.data() + done, -1);
  Need(done == static_cast<tmsize_t>(levels.size()), path);
}

}  // namespace bench
