// Smoothing of the whole stack.

#include <algorithm>
#include <vector>

#include "mainwindow/Main.h"
#include "platform/values/Numbers.h"
#include "platform/values/Parallel.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Dialogs.h"
#include "stack/Smoothing.h"

using namespace platform;

namespace {

/// Restores the page and the selection after smoothing, even if it fails.
class SmoothingGuard {
 public:
  explicit SmoothingGuard(Main& main) : main_(main), selectedRow_(main.SelectedRow) {}
  ~SmoothingGuard() {
    main_.SelectedRow = selectedRow_;
    main_.SpeciesLB.InvalidateCell(-1, -1);  // after a failure another row looks selected
    main_.ProgressHide();
  }

 private:
  Main& main_;
  std::int32_t selectedRow_;
};

void CopyLevels(PlaneView<const std::uint8_t> from, PlaneView<std::uint8_t> to, std::int32_t& maximum) {
  for (int y = 0; y < from.height; ++y) {
    std::copy_n(from.Row(y), from.width, to.Row(y));
    maximum = std::max<std::int32_t>(maximum, *std::max_element(from.Row(y), from.Row(y) + from.width));
  }
}

}  // namespace

void Main::Smooth(std::int32_t level) {
  SmoothLevel = level;
  Progress.Maximum(SpeciesLB.ListCount() + 1);
  Progress.Value(1);
  STstatus.Text("Smoothing Images ...");
  ProgressShow();
  const SmoothingGuard guard(*this);
  const std::int32_t startRow = SelectedRow;
  const int count = TIFubound() + 1;

  // In order from the species after the selected one, wrapping around, so that the selected one is last and stays
  // shown.
  std::int32_t current = 0;
  int smoothed = 0;  // steps whose planes are done: as many species are smoothed at once as there are cores
  for (int k = 0; k < count; ++k) {
    current = (k + startRow + 1) % count;
    if (TIFexists(current)) {
      if (level == 0) {
        TIFmax(current) = -1;
        CopyLevels(TIFarrOriginal.Plane(current), TIFarray.Plane(current), TIFmax(current));
      } else if (level < 0) {
        SmoothFromWorkPlane(current);
      } else if (k >= smoothed) {
        smoothed = SmoothFrom(k, startRow, level);
      }
    }
    ShowSmoothedSpecies(current, k);
  }
  SelectedRow = startRow;
  if (current != startRow) MsgBox("Wrong selection at end. 02310.");
}

int Main::SmoothFrom(int step, std::int32_t startRow, std::int32_t level) {
  const int count = TIFubound() + 1;
  std::vector<SmoothJob> jobs;
  std::vector<std::int32_t> species;
  for (; step < count && static_cast<int>(jobs.size()) < Parallelism(); ++step) {
    const std::int32_t current = (step + startRow + 1) % count;
    if (!TIFexists(current)) continue;
    species.push_back(current);
    jobs.push_back({TIFarrOriginal.Plane(current), TIFarray.Plane(current), -1});
  }
  // After a failure, only the first species that was not smoothed gets its maximum (-1); later ones keep theirs.
  const auto takeMaxima = [&] {
    bool failed = false;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
      const bool done = jobs[i].maximum >= 0;
      if (done || !failed) TIFmax(species[i]) = jobs[i].maximum;
      failed = failed || !done;
    }
  };
  try {
    AwaitWork([&] { SmoothPlanes(jobs, level); });
  } catch (...) {
    takeMaxima();
    throw;
  }
  takeMaxima();
  return step;
}

/// A level below 0 runs no pass: the original goes into the first work plane, and what the second one holds becomes the
/// map.
void Main::SmoothFromWorkPlane(std::int32_t species) {
  TIFmax(species) = -1;
  for (int x = 0; x < InTIFwidth; ++x) {
    for (int y = 0; y < InTIFheight; ++y) {
      temp1(x, y) = TIFarrOriginal(species, x, y);
      TIFarray(species, x, y) = ToInt32(temp2(x, y));
      TIFmax(species) = ToInt32(std::max<double>(TIFmax(species), temp2(x, y)));
    }
  }
}

void Main::ShowSmoothedSpecies(std::int32_t species, int step) {
  MoveSelection(species);
  Progress.Value(step + 1);
  Progress.Refresh();
  Update_cvTIF();
}
