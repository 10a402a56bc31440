#include "appcore/Globals.h"

using namespace platform;

namespace Globals {

Array<String> lutname;
Array2<Color> lut;
Ref<FolderItem> OutputFolder;
std::int32_t fCursorSize = 0;
Color fCursorColor = kBlack;
double Zoom = 0.0;
std::int32_t fCursorOldSize = 0;
std::int32_t fCursorXold = 0;
std::int32_t fCursorYold = 0;
bool fCursorShiftPressed = false;
Array2<Ref<FolderItem>> ooo;
Array<String> oooShortSpeciesNames;
Array2<bool> oooSpeciesExist;
std::int32_t FileDropCount = 0;
Array<std::int32_t> x1Draw, y1Draw, x2Draw, y2Draw;
Color DrawColor = kBlack;
bool ShowDraw = false;

std::span<const Color> LutRow(int table) { return {&lut(table, 0), static_cast<std::size_t>(lut.Ubound(2) + 1)}; }

void CreateArrays() {
  lut.Redim(20, 256);
  lutname.Redim(20);
  ooo.Redim(-1, -1);
  oooShortSpeciesNames.Redim(-1);
  oooSpeciesExist.Redim(-1, -1);
  for (auto* coordinates : {&x1Draw, &y1Draw, &x2Draw, &y2Draw}) coordinates->Redim(-1);
}

}  // namespace Globals
