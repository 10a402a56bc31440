// A drop onto Main, without the catalogue. Never called: Main accepts no file type.

#include "appcore/Globals.h"
#include "catalogue/SpeciesNamesMessages.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Dialogs.h"
#include "stack/ColorMapping.h"
#include "stack/LevelTaking.h"

using namespace platform;

void Main::Event_DropObject(DragItem& items, int /*action*/) {
  TIFready = false;
  Array<Ref<FolderItem>> files;
  do {
    if (items.FolderItemAvailable()) files.Append(items.FolderItem());
  } while (items.NextItem());
  SortByDisplayName(files);

  for (const Ref<FolderItem>& file : files) {
    const Ref<Picture> map = file->OpenAsPicture();
    if (SpeciesLB.ListCount() == 0) {
      InTIFwidth = map->Width();
      InTIFheight = map->Height();
      WResize();
      temp1.Redim(InTIFwidth, InTIFheight);
      temp2.Redim(InTIFwidth, InTIFheight);
      currTIF = NewPicture(InTIFwidth, InTIFheight, 32);
      currTIFrgb = currTIF->RGBSurface();
    } else if (map->Width() != InTIFwidth || map->Height() != InTIFheight) {
      MsgBox("Cannot load images. All images have to be of the same pixel size.");
      break;
    }
    const int n = SpeciesLB.ListCount();
    SpeciesLB.AddRow(Str(n + 1));
    SpeciesLB.Cell(n, 1, file->DisplayName());
    SpeciesLB.Cell(n, kSpeciesColumn, file->DisplayName());
    SelectedRow = n;
    TIFarray.Redim(n, InTIFwidth - 1, InTIFheight - 1);
    TIFarrOriginal.Redim(n, InTIFwidth - 1, InTIFheight - 1);
    Clicks.Redim(PhaseUbound(), n, 255);
    TakeLevels(*map, TIFarray.Plane(n), TIFarrOriginal.Plane(n));
    ColorPlane(TIFarray.Plane(n), ComposeColors(DisplayCurve(0, 255), Globals::LutRow(SelectedLUT)),
               currTIFrgb.Pixels());
  }
  CondShortName();
  if (SmoothLevel != 0) Smooth(SmoothLevel);
  TIFready = true;
}

void Main::CondShortName() {
  Array<String> names;
  for (int i = 0; i < SpeciesLB.ListCount(); ++i) names.Append(SpeciesLB.Cell(i, 1));
  Array<String> shorts(names.Ubound());
  String common = Globals::ShortNames(names, shorts);
  if (!common.Empty()) common = " (" + common + ")";
  for (int i = 0; i <= shorts.Ubound(); ++i) SpeciesLB.Cell(i, kSpeciesColumn, shorts(i));
  // The full names replace the short ones again: the list of a drop on Main shows full names.
  for (int i = 0; i <= names.Ubound(); ++i) SpeciesLB.Cell(i, kSpeciesColumn, SpeciesLB.Cell(i, 1));
  common = "";
  Title("Vornalite" + common);
  SpeciesLB.Refresh();
}
