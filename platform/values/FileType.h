#pragma once

#include "platform/values/String.h"

namespace platform {

/// A kind of file, by name.
struct FileType {
  String Name;        ///< such as "image/tiff"; found regardless of letter case
  String Extensions;  ///< with their points, separated by semicolons
  String MacType{};   ///< four-character code of Mac OS, or empty
  String MacCreator{};
};

/// Makes the type known, so that windows can accept it by name.
void RegisterFileType(const FileType& type);
/// Whether a file of that display name is of the registered type; false for an unknown type name.
bool IsOfFileType(const String& displayName, const String& typeName);

}  // namespace platform
