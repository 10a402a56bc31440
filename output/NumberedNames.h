#pragma once
/// Names of saved pictures: built from cluster and species, numbered where a name is taken.

#include <functional>

#include "platform/values/String.h"

/// The file name of the picture of one species, and of a composite of three.
platform::String SpeciesFileName(const platform::String& cluster, const platform::String& species);
platform::String CompositeFileName(const platform::String& cluster, const platform::String& first,
                                   const platform::String& second, const platform::String& third);

/// Position of the last dot of the name, from 1; 0 if it has none.
int LastPoint(const platform::String& name);

/// Inserts the number, with at least two digits, before the last dot of the name, or appends it if there is none:
/// "a.png" and 2 give "a_02.png".
platform::String NumberedName(const platform::String& name, int number);

/// The first number, from 2, whose numbered name is not taken; 100 if none up to 99 is free.
int FirstFreeNumber(const platform::String& name, const std::function<bool(const platform::String&)>& taken);
constexpr int kNoFreeNumber = 100;
