#pragma once

#include "platform/values/Array.h"
#include "platform/values/String.h"

namespace Globals {

/// StripCommon, with a message if the two arrays differ in size.
platform::String ShortNames(const platform::Array<platform::String>& names, platform::Array<platform::String>& shorts);

}  // namespace Globals
