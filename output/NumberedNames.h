#pragma once
/// Names of saved pictures: built from cluster and species, numbered where a name is taken.

#include <functional>

#include "platform/pictures/FolderItem.h"
#include "platform/values/String.h"

namespace GlobalUniversal {

/// Replaces a file that exists by the first one of the row name_02, name_03 ... beside it that does not. After 99 a
/// message comes and name_100 serves, taken or not.
void FileNameIncrement(platform::Ref<platform::FolderItem>& file);

}  // namespace GlobalUniversal

namespace output {

/// The file name of the picture of one species, and of a composite of three.
platform::String SpeciesFileName(const platform::String& cluster, const platform::String& species);
platform::String CompositeFileName(const platform::String& cluster, const platform::String& first,
                                   const platform::String& second, const platform::String& third);

/// Position of the last point of the name, from 1; 0 if it has none.
int LastPoint(const platform::String& name);

/// The name with the number, two digits at least, before its last point or else at its end: "a.png" and 2 give
/// "a_02.png".
platform::String NumberedName(const platform::String& name, int number);

/// The first number, from 2, whose numbered name is not taken; 100 if none up to 99 is free.
int FirstFreeNumber(const platform::String& name, const std::function<bool(const platform::String&)>& taken);
constexpr int kNoFreeNumber = 100;

}  // namespace output
