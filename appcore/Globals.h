#pragma once
/// The state that all windows share. It lives from the start of the program to its end and is never written to disk.
/// The functions of this namespace are in the folders of their subjects: names in catalogue/, the display curve in
/// stack/, the linked cursor in mainwindow/.

#include <cstdint>
#include <span>

#include "platform/pictures/FolderItem.h"
#include "platform/values/Array.h"
#include "platform/values/Color.h"
#include "platform/values/Ref.h"
#include "platform/values/String.h"

namespace Globals {

// Colour tables.
extern platform::Array<platform::String> lutname;  ///< names of the tables; 0 to 19 are used of upper bound 20
extern platform::Array2<platform::Color> lut;      ///< table by grey level, upper bounds 20 and 256; 0..19, 0..255 used
/// One table's row of lut, 257 entries.
std::span<const platform::Color> LutRow(int table);

// Output.
extern platform::Ref<platform::FolderItem> OutputFolder;  ///< where pictures are saved

// Linked cursor, canvas pixels.
extern std::int32_t fCursorSize;  ///< radius of the circle
extern platform::Color fCursorColor;
extern double Zoom;                  ///< canvas pixels per image pixel: 0.5, 1, 2, 3, 4, 5; 0 until Main has opened
extern std::int32_t fCursorOldSize;  ///< radius of the mark on the screen, 0 for the small cross
extern std::int32_t fCursorXold;     ///< position of the mark on the screen
extern std::int32_t fCursorYold;
extern bool fCursorShiftPressed;  ///< Shift was down at an earlier tick and has not been up since

// Catalogue.
extern platform::Array2<platform::Ref<platform::FolderItem>> ooo;  ///< cluster by file; files first, then nil
extern platform::Array<platform::String> oooShortSpeciesNames;     ///< union of all species; index = species number
extern platform::Array2<bool> oooSpeciesExist;                     ///< cluster by species
extern std::int32_t FileDropCount;                                 ///< last hidden row number given; only rises

// Drawing, image pixels: four parallel arrays, one row per line segment; a row of -10s begins each stroke.
extern platform::Array<std::int32_t> x1Draw, y1Draw, x2Draw, y2Draw;
extern platform::Color DrawColor;
extern bool ShowDraw;

/// Gives the arrays their initial bounds.
void CreateArrays();

}  // namespace Globals
