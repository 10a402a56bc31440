/// expected PICTURE TABLE LEVEL FILE: writes as PNG what a canvas must show for a map file: its grey levels, smoothed
/// LEVEL times (0 is raw), in the colour table of that index, with the linear display curve.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/pictures/PNGu.h"
#include "stack/ColorTables.h"
#include "stack/Smoothing.h"

using namespace platform;

int main(int argc, char** argv) {
  const Ref<Picture> picture = argc == 5 ? MakeRef<FolderItem>(argv[4])->OpenAsPicture() : Ref<Picture>();
  if (!picture) {
    std::fputs("usage: expected PICTURE TABLE LEVEL FILE\n", stderr);
    return 2;
  }
  const PlaneView<Color> pixels = picture->Pixels();
  const auto colors = ParseColorTable(ColorTableLines()(std::atoi(argv[2]))).colors;

  std::vector<std::uint8_t> levels;
  for (int y = 0; y < pixels.height; ++y)
    for (int x = 0; x < pixels.width; ++x) {
      const Color pixel = pixels(x, y);
      levels.push_back(static_cast<std::uint8_t>(std::max({Red(pixel), Green(pixel), Blue(pixel)})));
    }
  std::vector<std::uint8_t> smoothed = levels;
  if (const int level = std::atoi(argv[3]); level > 0) {
    SmoothJob job{{levels.data(), pixels.width, pixels.height, pixels.width},
                  {smoothed.data(), pixels.width, pixels.height, pixels.width}};
    SmoothPlanes({&job, 1}, level);
  }
  for (int y = 0; y < pixels.height; ++y)
    for (int x = 0; x < pixels.width; ++x)
      pixels(x, y) = colors[static_cast<std::size_t>(smoothed[static_cast<std::size_t>(y * pixels.width + x)])];
  return PNGu::SavePicture(MakeRef<FolderItem>(argv[1]), picture) ? 0 : 1;
}
