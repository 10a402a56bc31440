#include "stack/ColorTables.h"

#include <cstdint>
#include <string_view>

#include "platform/values/Numbers.h"

using platform::Array;
using platform::Color;
using platform::String;

namespace {

constexpr std::string_view kLines[] = {
#include "stack/ColorTablesData.inc"
};

/// Removes the first of the comma-separated fields and returns it.
String TakeField(std::u32string_view& fields) {
  const auto comma = fields.find(U',');
  String field{std::u32string(fields.substr(0, comma))};
  fields.remove_prefix(comma == fields.npos ? fields.size() : comma + 1);
  return field;
}

Color ColorOf(std::int32_t number) {
  const std::int32_t red = number / 65536;
  const std::int32_t green = (number - red * 65536) / 256;
  return platform::RGB(red, green, number % 256);
}

}  // namespace

Array<String> ColorTableLines() {
  Array<String> lines;
  for (const std::string_view line : kLines) lines.Append(line);
  return lines;
}

ParsedTable ParseColorTable(const String& line) {
  std::u32string_view fields = line.Characters();
  ParsedTable table;
  table.name = TakeField(fields);
  for (Color& color : table.colors) color = ColorOf(platform::ToInt32(platform::Val(TakeField(fields))));
  table.colors[0] = table.colors[1];
  table.colors[255] = table.colors[254];
  return table;
}
