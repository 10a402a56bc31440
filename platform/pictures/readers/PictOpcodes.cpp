#include "platform/pictures/readers/PictOpcodes.h"

#include <algorithm>
#include <iterator>

namespace platform::pict {

namespace {

enum class Length {
  kFixed,       // `bytes` alone
  kByteCount,   // `bytes`, then a count of one byte, then as many bytes
  kWordCount,   // the same with a count of two bytes
  kLongCount,   // the same with a count of four bytes
  kOwnSize,     // a region or polygon: a word that counts itself
  kFromOpcode,  // twice the high byte of the opcode
};

/// Covers the opcodes up to `last` that no previous entry covers.
struct Entry {
  int last;
  Length length;
  std::size_t bytes = 0;
};

constexpr Entry kEntries[] = {
    {0x00, Length::kFixed, 0},       {0x01, Length::kOwnSize},      {0x02, Length::kFixed, 8},
    {0x03, Length::kFixed, 2},       {0x04, Length::kFixed, 1},     {0x05, Length::kFixed, 2},
    {0x07, Length::kFixed, 4},       {0x08, Length::kFixed, 2},     {0x0A, Length::kFixed, 8},
    {0x0C, Length::kFixed, 4},       {0x0D, Length::kFixed, 2},     {0x0F, Length::kFixed, 4},
    {0x10, Length::kFixed, 8},       {0x11, Length::kFixed, 2},     {0x16, Length::kFixed, 2},
    {0x19, Length::kFixed, 0},       {0x1B, Length::kFixed, 6},     {0x1C, Length::kFixed, 0},
    {0x1D, Length::kFixed, 6},       {0x1E, Length::kFixed, 0},     {0x1F, Length::kFixed, 6},
    {0x20, Length::kFixed, 8},       {0x21, Length::kFixed, 4},     {0x22, Length::kFixed, 6},
    {0x23, Length::kFixed, 2},       {0x27, Length::kWordCount, 0}, {0x28, Length::kByteCount, 4},
    {0x2A, Length::kByteCount, 1},   {0x2B, Length::kByteCount, 2}, {0x2F, Length::kWordCount, 0},
    {0x37, Length::kFixed, 8},       {0x3F, Length::kFixed, 0},     {0x47, Length::kFixed, 8},
    {0x4F, Length::kFixed, 0},       {0x57, Length::kFixed, 8},     {0x5F, Length::kFixed, 0},
    {0x67, Length::kFixed, 12},      {0x6F, Length::kFixed, 4},     {0x77, Length::kOwnSize},
    {0x7F, Length::kFixed, 0},       {0x87, Length::kOwnSize},      {0x8F, Length::kFixed, 0},
    {0x9F, Length::kWordCount, 0},   {0xA0, Length::kFixed, 2},     {0xA1, Length::kWordCount, 2},
    {0xAF, Length::kWordCount, 0},   {0xCF, Length::kFixed, 0},     {0xFE, Length::kLongCount, 0},
    {0xFF, Length::kFixed, 0},       {0x7FFF, Length::kFromOpcode}, {0x80FF, Length::kFixed, 0},
    {0xFFFF, Length::kLongCount, 0},
};

}  // namespace

void SkipData(Input& input, int opcode, Version version) {
  if (opcode == 0x11 && version == Version::kOne) return input.Skip(1);
  const Entry& entry = *std::find_if(std::begin(kEntries), std::end(kEntries),
                                     [opcode](const Entry& candidate) { return opcode <= candidate.last; });
  input.Skip(entry.bytes);
  switch (entry.length) {
    case Length::kFixed:
      break;
    case Length::kByteCount:
      input.Skip(input.Byte());
      break;
    case Length::kWordCount:
      input.Skip(input.Word());
      break;
    case Length::kLongCount:
      input.Skip(input.Long());
      break;
    case Length::kOwnSize:
      input.Skip(std::max<std::size_t>(input.Word(), 2) - 2);
      break;
    case Length::kFromOpcode:
      input.Skip(static_cast<std::size_t>(opcode >> 8) * 2);
      break;
  }
}

}  // namespace platform::pict
