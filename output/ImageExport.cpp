// Saves the map of a window as a PNG file under the next free name.

#include "appcore/Globals.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "output/NumberedNames.h"
#include "output/NumberedNamesMessages.h"
#include "platform/pictures/PNGu.h"
#include "platform/widgets/Application.h"

using namespace platform;

namespace {

/// Saves under the next free name. If another program takes that name while the picture is written, numbering restarts.
void SaveUnderFreeName(const String& name, const Ref<Picture>& picture) {
  const Ref<FolderItem> folder = Globals::OutputFolder;
  if (!folder->Exists())
    ThrowNil(("The folder " + folder->Path().string() +
              " does not exist any more. Choose another one with \"Change Save Location...\" and save again.")
                 .c_str());
  const String last = NumberedName(name, kNoFreeNumber);
  Ref<FolderItem> file;
  auto outcome = NewFile::Outcome::NameTaken;
  while (outcome == NewFile::Outcome::NameTaken) {
    file = folder->Child(name);
    GlobalUniversal::FileNameIncrement(file);
    AwaitWork([&] {
      if (file->DisplayName() == last)  // no name is free
        outcome = PNGu::SavePicture(file, picture, -1.0F) ? NewFile::Outcome::Written : NewFile::Outcome::Failed;
      else
        outcome = PNGu::SaveNewPicture(file, picture);
    });
  }
  if (outcome == NewFile::Outcome::Written) {
    file->MacCreator("GKON");
    file->MacType("PNGf");
  }
}

}  // namespace

void Main::SaveImage() {
  if (!currTIF || !TIFexists(SelectedRow)) return;
  SaveUnderFreeName(SpeciesFileName(FrameName, SpeciesLB.Cell(SelectedRow, kSpeciesColumn)), currTIF);
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
  SaveUnderFreeName(CompositeFileName(Main::Instance().FrameName, names[0], names[1], names[2]), RGBimage);
}
