#include "platform/values/FileType.h"

#include <algorithm>
#include <vector>

namespace platform {

static std::vector<FileType>& FileTypes() {
  static std::vector<FileType> types;
  return types;
}

void RegisterFileType(const FileType& type) { FileTypes().push_back(type); }

bool IsOfFileType(const String& displayName, const String& typeName) {
  const auto& types = FileTypes();
  const auto type = std::find_if(types.begin(), types.end(), [&](const FileType& t) { return t.Name == typeName; });
  if (type == types.end()) return false;
  for (int i = 1;; ++i) {
    const String extension = NthField(type->Extensions, ";", i);
    if (extension.Empty()) return false;
    if (Right(displayName, Len(extension)) == extension) return true;
  }
}

}  // namespace platform
