// Loads a row of the catalogue into the stack.

#include <algorithm>
#include <new>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "catalogue/SpeciesNames.h"
#include "catalogue/SpeciesNamesMessages.h"
#include "catalogue/WindowOverview.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "platform/pictures/PictureSequence.h"
#include "platform/values/ErrorLine.h"
#include "platform/values/Memory.h"
#include "platform/values/Numbers.h"
#include "platform/values/Parallel.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/Screen.h"
#include "stack/ColorMapping.h"
#include "stack/LevelTaking.h"

using namespace platform;

/// The files of the cluster that is being loaded.
struct Main::ClusterFiles {
  Array<Ref<FolderItem>> bySpecies;  ///< entry j: the file of species j, or nil
  Array<String> fullNames;           ///< names of the files, in their order
  Array<String> shortNames;

  /// The file of a species of the cluster. Throws NilObjectException if no file has its name.
  const FolderItem& Of(int species) const {
    const Ref<FolderItem>& file = bySpecies(species);
    if (!file) ThrowNil(("no file was found for species " + Globals::oooShortSpeciesNames(species)).Utf8().c_str());
    return *file;
  }
};

namespace {

/// Throws NilObjectException if a file could not be opened; the reason has been written by then.
void CheckOpened(const Ref<Picture>& picture, const FolderItem& file) {
  if (!picture) ThrowNil((file.Path().string() + " could not be opened").c_str());
}

std::string FileAndSize(const FolderItem& file, int width, int height) {
  return file.Path().string() + " has " + std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

}  // namespace

void Main::Open_LoadNew(std::int32_t row) {
  int code = 0;
  try {
    LoadCluster(row, code);
  } catch (...) {
    ReportFailure("Error in Open_LoadNew." + EndOfLine() + "Code " + Str(code), "Open_LoadNew, Code " + Str(code));
    App::Instance().Quit();  // with status 0: the message has reported the failure
  }
}

void Main::LoadCluster(std::int32_t row, int& code) {
  dbtimer = Ticks();
  const auto showTime = [this] { Title(Title() + "  " + Str(Ticks() - dbtimer)); };
  if (row < 0) {
    Hide();
    WindowRGB::Instance().Hide();
    return showTime();
  }
  Visible(true);
  const Listbox& rows = WindowOverview::Instance().ListBox1;
  if (rows.Cell(row, WindowOverview::kNumber) == currFileNb) return showTime();

  TIFready = false;
  currFileNb = rows.Cell(row, WindowOverview::kNumber);
  const int species = Globals::oooShortSpeciesNames.Ubound();
  ClusterFiles files = GatherFiles(row);

  code = 1;
  MatchSpecies(row, files);

  code = 2;
  CheckFlags(files);
  const int first = TIFexists.IndexOf(true);
  if (first < 0) MsgBox("Nothing exists.");

  code = 3;
  // If the cluster has no species, or none matches a file, this throws and ends the load.
  const FolderItem& firstFile = files.Of(first);
  Ref<Picture> opened;
  AwaitWork([&] { opened = firstFile.OpenAsPicture(); });
  CheckOpened(opened, firstFile);
  InTIFwidth = opened->Width();
  InTIFheight = opened->Height();
  PictureSequence others = OpenOthers(files, first);
  WResize();
  WindowRGB::Instance().WResize();
  Progress.Maximum(species + 1);
  Progress.Value(1);
  STstatus.Text("Loading Images ...");
  ProgressShow();
  currTIF = nullptr;

  code = 4;
  Show();
  ResizeStack(species);
  FillSpeciesRows(species);

  code = 5;
  const std::int32_t kept = SelectedRow >= 0 && SelectedRow <= species ? SelectedRow : 0;

  code = 6;
  SelectedRow = 0;
  SpeciesLB.InvalidateCell(-1, -1);
  Title(Str(Ticks() - dbtimer));
  dbtimer = Ticks();
  if (!LoadPictures(files, first, opened, others)) {
    MsgBox("Cannot load images. All images have to be of the same pixel size.");
    return;
  }

  code = 7;
  if (SmoothLevel != 0) Smooth(SmoothLevel);
  ProgressHide();
  MoveSelection(kept);
  SpeciesLB.Reveal(SelectedRow);  // the list may have been scrolled in another cluster
  Update_cvTIF();
  TIFready = true;

  code = 8;
  showTime();
}

/// Which species the row has, and its files.
Main::ClusterFiles Main::GatherFiles(std::int32_t row) {
  const int species = Globals::oooShortSpeciesNames.Ubound();
  ClusterFiles files;
  files.bySpecies.Redim(species);
  TIFexists.Redim(species);
  for (int j = 0; j <= species; ++j) TIFexists(j) = Globals::oooSpeciesExist(row, j);
  const auto& catalogue = Globals::ooo;
  for (int c = 0; c <= catalogue.Ubound(2); ++c) {
    if (!catalogue(row, c)) continue;
    files.fullNames.Append(Globals::RemoveExtension(catalogue(row, c)->DisplayName()));
    files.shortNames.Append(String());
  }
  return files;
}

void Main::MatchSpecies(std::int32_t row, ClusterFiles& files) {
  WindowOverview& overview = WindowOverview::Instance();
  const String cluster = Globals::ShortNames(files.fullNames, files.shortNames);
  if (overview.CBnoSpeciesExtensions.Value()) overview.NoUnderscoreExtensions(files.shortNames);
  const String shown = overview.ListBox1.Cell(row, WindowOverview::kCluster);
  if (cluster != shown) MsgBox("error in Main-Open_LoadNew");
  FrameName = shown;
  Title("Main (" + FrameName + ")-" + Str(Globals::ooo.Ubound(2)) + "   oooSpeciesExist " +
        Str(Globals::oooSpeciesExist.Ubound(1)) + "-" + Str(Globals::oooSpeciesExist.Ubound(2)));
  for (int j = 0; j <= files.bySpecies.Ubound(); ++j) {
    const int index = files.shortNames.IndexOf(Globals::oooShortSpeciesNames(j));
    if (index >= 0) files.bySpecies(j) = Globals::ooo(row, index);
  }
}

/// Shows a message if the existence table and the files found disagree.
void Main::CheckFlags(const ClusterFiles& files) {
  String flags;
  bool differ = false;
  for (int j = 0; j <= TIFexists.Ubound(); ++j) {
    const bool found = static_cast<bool>(files.bySpecies(j));
    flags += tf(TIFexists(j)) + "-" + tf(found) + " ";
    differ = differ || TIFexists(j) != found;
  }
  if (!differ) return;
  MsgBox("Wrong TIFexist flags" + EndOfLine() + flags + EndOfLine() + Join(files.shortNames, ", ") + EndOfLine() +
         Join(Globals::oooShortSpeciesNames, ", "));
}

/// Throws if the stack and the pictures of the map need more memory than is available. The allocation itself would
/// succeed, because the system provides memory only when it is written, and then kills a program that writes too much.
void Main::CheckMemory() const {
  const double pixels = static_cast<double>(InTIFwidth) * InTIFheight;
  // A level takes one byte. The planes of absent species are never written, so they take no memory, unless planes are
  // smaller than a huge page: then they share pages with those of other species.
  const auto species = pixels < kHugePage ? TIFexists.Ubound() + 1.0
                                          : static_cast<double>(std::count(TIFexists.begin(), TIFexists.end(), true));
  // currTIF and drawcurrTIF, the pictures that are decoded at once, and the canvas.
  const double pictures = (2 + Parallelism() + Globals::Zoom * Globals::Zoom) * sizeof(Color);
  // The planes that the last load filled still take memory, but ResizeStack will reuse them or free them.
  const auto filled =
      static_cast<double>(std::count_if(TIFmax.begin(), TIFmax.end(), [](int level) { return level >= 0; }));
  const double reusable = 2.0 * filled * (TIFarray.Ubound(2) + 1) * (TIFarray.Ubound(3) + 1);
  if ((2.0 * species + pictures) * pixels > AvailableMemory() + reusable) throw std::bad_alloc();
}

void Main::ResizeStack(int species) {
  CheckMemory();
  const int right = InTIFwidth - 1;
  const int bottom = InTIFheight - 1;
  // This takes long for a large stack, so it runs on another thread and windows are painted meanwhile. No Paint handler
  // reads the planes: maps are painted from pictures, and Main paints none while currTIF is nil.
  AwaitWork([&] {
    TIFarray.Redim(species, right, bottom);
    TIFarrOriginal.Redim(species, right, bottom);
  });
  temp1.Redim(right, bottom);
  temp2.Redim(right, bottom);
  TIFmax.Redim(species);
  RangeHi.Redim(PhaseUbound(), species);
  RangeLo.Redim(PhaseUbound(), species);
  currTIF = NewPicture(InTIFwidth, InTIFheight, 32);
  drawcurrTIF = NewPicture(InTIFwidth, InTIFheight, 32);
  currTIFrgb = currTIF->RGBSurface();
  Clicks.Redim(PhaseUbound(), species, 255);
}

/// One row per species. Existing rows keep their marks, even from another cluster.
void Main::FillSpeciesRows(int species) {
  if (SpeciesLB.ListCount() != species + 1) {
    for (int j = SpeciesLB.ListCount(); j <= species; ++j) {
      for (int p = 0; p <= PhaseUbound(); ++p) {
        RangeLo(p, j) = 0;
        RangeHi(p, j) = 255;
        for (int k = 0; k <= 255; ++k) Clicks(p, j, k) = false;
      }
    }
    SpeciesLB.DeleteAllRows();
    for (int j = 0; j <= species; ++j) SpeciesLB.AddRow(Str(j + 1));
  }
  for (int j = 0; j <= species; ++j) SpeciesLB.Cell(j, kSpeciesColumn, Globals::oooShortSpeciesNames(j));
}

/// Begins to open the files after that of species `first`: at most as many at once as there are cores, and as fit with
/// their pictures into a quarter of a gigabyte.
PictureSequence Main::OpenOthers(const ClusterFiles& files, int first) const {
  Array<Ref<FolderItem>> others;
  for (int j = first + 1; j <= TIFexists.Ubound(); ++j)
    if (TIFexists(j)) others.Append(files.bySpecies(j));
  const double fit = 0x1p28 / (sizeof(Color) * static_cast<double>(InTIFwidth) * InTIFheight);
  return {std::move(others), std::clamp(ToInt32(fit), 1, Parallelism())};
}

/// Reads every file into the stack, showing each as it is loaded; false if one differs in size from the first. Each
/// file is decoded once; `opened` is the picture of species `first`.
bool Main::LoadPictures(const ClusterFiles& files, int first, const Ref<Picture>& opened, PictureSequence& others) {
  const LevelColors unscaled = ComposeColors(DisplayCurve(0, 255), Globals::LutRow(SelectedLUT));
  for (int j = 0; j <= TIFexists.Ubound(); ++j) {
    TIFmax(j) = -1;
    if (TIFexists(j)) {
      const FolderItem& file = files.Of(j);
      Ref<Picture> picture = opened;
      const auto fits = [&] { return picture->Width() == InTIFwidth && picture->Height() == InTIFheight; };
      int highest = -1;
      AwaitWork([&] {
        if (j != first) picture = others.Next();
        if (picture && fits()) highest = TakeLevels(*picture, TIFarray.Plane(j), TIFarrOriginal.Plane(j));
      });
      CheckOpened(picture, file);
      if (!fits()) {
        WriteErrorLine(FileAndSize(file, picture->Width(), picture->Height()) + ", but " +
                       FileAndSize(files.Of(first), InTIFwidth, InTIFheight));
        return false;
      }
      TIFmax(j) = highest;
      ColorPlane(TIFarray.Plane(j), unscaled, currTIFrgb.Pixels());
      MoveSelection(j);
      cvTIF.Refresh();
    }
    Progress.Value(j + 1);
    Progress.Refresh();
  }
  return true;
}
