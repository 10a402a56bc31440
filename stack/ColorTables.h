#pragma once
/// The twenty colour tables. They are data, made by tools/make_color_tables.py.

#include <array>

#include "platform/values/Array.h"
#include "platform/values/Color.h"
#include "platform/values/String.h"

/// One line a table: its name, then 256 colours 0xRRGGBB as decimal numbers, separated by commas. The first and the
/// last colour, white and black, are marks of this format.
platform::Array<platform::String> ColorTableLines();

struct ParsedTable {
  platform::String name;
  std::array<platform::Color, 256> colors{};
};

/// The table of a line. Entries 0 and 255 repeat their neighbours, so the marks never show. What a line lacks is black.
ParsedTable ParseColorTable(const platform::String& line);
