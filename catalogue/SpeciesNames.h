#pragma once
/// Names of species, made from the names of the files of a cluster: what all names have in common at the front and at
/// the back is stripped, the rest is made safe for file names. Nothing here knows any chemistry.

#include "platform/values/Array.h"
#include "platform/values/String.h"

namespace Globals {

/// The name without one of the thirteen known extensions; unchanged if it ends in none of them.
platform::String RemoveExtension(const platform::String& name);

/// The name with every character outside the allowed set turned into an underscore, runs of underscores made one, and
/// none left at the end. "?" for the empty name.
platform::String CleanString(const platform::String& name);

/// catalogue::StripCommon, with a message if the two arrays differ in size.
platform::String ShortNames(const platform::Array<platform::String>& names, platform::Array<platform::String>& shorts);

}  // namespace Globals

namespace catalogue {

/// Writes the short name of each of `names` into the same place of `shorts` and returns the cleaned common part of the
/// names, which is the name of their cluster. If the arrays differ in size, `shorts` stays as it is and the answer is
/// the cleaned first name. Does not return for names that agree at every place when the last (or first) character of
/// each stands for all beyond its end, such as "Mg" and "Mgg". Throws OutOfBoundsException without names.
platform::String StripCommon(const platform::Array<platform::String>& names, platform::Array<platform::String>& shorts);

/// Takes marks such as "_1" or "27" off the end of each name, in place.
void NoUnderscoreExtensions(platform::Array<platform::String>& names);

}  // namespace catalogue
