// Adds dropped files to the catalogue.

#include "appcore/Globals.h"
#include "catalogue/MapFile.h"
#include "catalogue/SpeciesNames.h"
#include "catalogue/SpeciesNamesMessages.h"
#include "catalogue/WindowOverview.h"
#include "platform/values/ErrorLine.h"
#include "platform/widgets/Dialogs.h"

using namespace platform;

void WindowOverview::AddCluster(const String& name) {
  Globals::FileDropCount += 1;
  ListBox1.AddRow(Str(Globals::FileDropCount));
  const int row = ListBox1.ListCount() - 1;
  ListBox1.Cell(row, kCluster, name);
  ListBox1.CellTag(row, kCluster, false);
}

void WindowOverview::Event_DropObject(DragItem& items, int /*action*/) {
  Array<Ref<FolderItem>> files;
  std::string unreadable;
  do {
    if (!items.FolderItemAvailable()) continue;
    const FolderItem& file = *items.FolderItem();
    const String why = file.WhyNotReadable();
    if (why.Empty()) {
      files.Append(items.FolderItem());
    } else {
      unreadable = file.Path().string() + ": " + why.Utf8();
      WriteErrorLine(unreadable);
    }
  } while (items.NextItem());

  if (files.Ubound() < 0)
    throw OutOfBoundsException("Nothing that was dropped can be read. " + unreadable +
                               ". Drop image or .xray files that you are allowed to read.");
  const bool mapFiles = Globals::IsXrayFile(files(0));
  for (const Ref<FolderItem>& file : files) {
    if (Globals::IsXrayFile(file) != mapFiles) {
      MsgBox(
          "You cannot drag a combination of \".xray\" and other files. Stay with one file type at a time and I won't "
          "complain. Several files of the same type is OK, though.");
      return;
    }
  }

  auto& catalogue = Globals::ooo;
  if (mapFiles) {
    SortByDisplayName(files);
    for (const Ref<FolderItem>& file : files) {
      catalogue.Redim(catalogue.Ubound(1) + 1, std::max(0, catalogue.Ubound(2)));
      catalogue(catalogue.Ubound(1), 0) = file;
      AddCluster(Globals::RemoveExtension(file->DisplayName()));
    }
  } else {
    catalogue.Redim(catalogue.Ubound(1) + 1, std::max(files.Ubound(), catalogue.Ubound(2)));
    Array<String> fullNames;
    for (int i = 0; i <= files.Ubound(); ++i) {
      catalogue(catalogue.Ubound(1), i) = files(i);
      fullNames.Append(Globals::RemoveExtension(files(i)->DisplayName()));
    }
    Array<String> shorts(fullNames.Ubound());
    AddCluster(Globals::ShortNames(fullNames, shorts));
  }
  UpdateShortNames();
}
