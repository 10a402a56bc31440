#include "output/NumberedNamesMessages.h"

#include "output/NumberedNames.h"
#include "platform/widgets/Dialogs.h"

using platform::FolderItem;
using platform::Ref;
using platform::String;

void GlobalUniversal::FileNameIncrement(Ref<FolderItem>& file) {
  if (!file->Exists()) return;
  const String name = file->DisplayName();
  // Both searches for a dot agree, so this message never appears.
  if (platform::InStr(name, ".") > 0 && LastPoint(name) == 0) platform::MsgBox("error in filenameincr");
  const Ref<FolderItem> folder = file->Parent();
  const int number = FirstFreeNumber(name, [&](const String& child) { return folder->Child(child)->Exists(); });
  if (number == kNoFreeNumber) platform::MsgBox("filename increment exceeds 99");
  file = folder->Child(NumberedName(name, number));
}
