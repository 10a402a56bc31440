// Saving what a window shows as a PNG file, under the next free name.

#include "appcore/Globals.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "output/NumberedNames.h"
#include "platform/pictures/PNGu.h"
#include "platform/widgets/Application.h"

using namespace platform;

namespace {

void SaveUnderFreeName(const String& name, const Ref<Picture>& picture) {
  Ref<FolderItem> file = Globals::OutputFolder->Child(name);
  GlobalUniversal::FileNameIncrement(file);
  bool saved = false;
  AwaitWork([&] { saved = PNGu::SavePicture(file, picture, -1.0F); });
  if (saved) {
    file->MacCreator("GKON");
    file->MacType("PNGf");
  }
}

}  // namespace

void Main::SaveImage() {
  if (!currTIF || !TIFexists(SelectedRow)) return;
  SaveUnderFreeName(output::SpeciesFileName(FrameName, SpeciesLB.Cell(SelectedRow, kSpeciesColumn)), currTIF);
}

void Main::PB_SaveImage_Action() { SaveImage(); }

bool Main::_FileSaveImage_Action() {
  SaveImage();
  return true;
}

void WindowRGB::SaveImage() {
  String names[kChannels];
  for (int i = 0; i < kChannels; ++i) {
    const int row = popM[i].ListIndex();
    names[i] = row == 0 ? String("_") : NameArray(row - 1);
  }
  SaveUnderFreeName(output::CompositeFileName(Main::Instance().FrameName, names[0], names[1], names[2]), RGBimage);
}
