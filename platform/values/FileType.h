#pragma once

#include "platform/values/String.h"

namespace platform {

/// A kind of file, by name.
struct FileType {
  String Name;        ///< such as "image/tiff"; letter case does not matter
  String Extensions;  ///< with their dots, separated by semicolons
  String MacType{};   ///< four-character code of Mac OS, or empty
  String MacCreator{};
};

/// Registers the type, so that windows can accept it by name.
void RegisterFileType(const FileType& type);
/// Whether a file with that display name has the type registered under that name; false if there is no such type.
bool IsOfFileType(const String& displayName, const String& typeName);

}  // namespace platform
