#include "output/NumberedNames.h"

#include "catalogue/SpeciesNames.h"

using platform::String;

namespace {

String PictureName(const String& cluster, const String& what) {
  return Globals::CleanString(cluster + "_(" + what + ")") + ".png";
}

}  // namespace

String SpeciesFileName(const String& cluster, const String& species) { return PictureName(cluster, species); }

String CompositeFileName(const String& cluster, const String& first, const String& second, const String& third) {
  return PictureName(cluster, first + "+" + second + "+" + third);
}

int LastPoint(const String& name) {
  const auto point = name.Characters().rfind(U'.');
  return point == std::u32string::npos ? 0 : static_cast<int>(point) + 1;
}

String NumberedName(const String& name, int number) {
  const int point = LastPoint(name);
  const String base = point > 0 ? Left(name, point - 1) : name;
  const String tail = point > 0 ? Mid(name, point) : String();
  return base + "_" + platform::Format(number, "00") + tail;
}

int FirstFreeNumber(const String& name, const std::function<bool(const String&)>& taken) {
  int number = 2;
  while (number < kNoFreeNumber && taken(NumberedName(name, number))) ++number;
  return number;
}
