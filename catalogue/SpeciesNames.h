#pragma once
/// Names of species, derived from the file names of a cluster: the common beginning and end of all names is stripped,
/// and the rest is made safe for file names. No chemistry is involved.

#include "platform/values/Array.h"
#include "platform/values/String.h"

namespace Globals {

/// The name without one of the thirteen known extensions; unchanged if it ends in none of them.
platform::String RemoveExtension(const platform::String& name);

/// Replaces every character outside the allowed set by an underscore, then collapses runs of underscores and removes
/// those at the end. "?" for the empty name.
platform::String CleanString(const platform::String& name);

}  // namespace Globals

/// Writes the short name of each of `names` to the same index of `shorts` and returns the cleaned common part of the
/// names, which is the name of their cluster. If the arrays differ in size, `shorts` is unchanged and the cleaned first
/// name is returned. Does not return if the names agree at every position when each is extended by repeating its last
/// (or first) character, such as "Mg" and "Mgg". Throws OutOfBoundsException without names.
platform::String StripCommon(const platform::Array<platform::String>& names, platform::Array<platform::String>& shorts);

/// Removes suffixes such as "_1" or "27" from each name, in place.
void RemoveSuffixes(platform::Array<platform::String>& names);
