#include "mainwindow/WindowSelectColor.h"

#include "platform/widgets/Application.h"
#include "platform/widgets/Dialogs.h"

using namespace platform;

namespace {

constexpr int kColumns = 4;
constexpr int kRows = 3;
constexpr int kCell = 20;  // side of a field, pixels
constexpr int kGap = 10;

constexpr int FieldLeft(int column) { return kGap + column * (kCell + kGap); }
constexpr int FieldTop(int row) { return 2 * kGap + (row + 1) * (kCell + kGap); }

}  // namespace

WindowSelectColor::WindowSelectColor()
    : SingletonWindow({.title = "Select Color...",
                       .width = 289,
                       .height = 172,
                       .visible = false,
                       .frame = Frame::MovableModal,
                       .resizeable = false}) {
  CreateControls();
  AddMenuHandlers();
}

void WindowSelectColor::CreateControls() {
  Window::CreateControls({
      // control, name, left, top, width, height, locks, page, text, about
      {&Canvas1, "Canvas1", 20, 14, 129, 138, kLockLeftTop, kNoPage, "", "Chosen color, and twelve to choose from"},
      {&PBok, "PBok", 189, 132, 80, 20, kLockRight, kNoPage, "OK", "Takes the chosen color"},
      {&PBcancel, "PBcancel", 189, 100, 80, 20, kLockRight, kNoPage, "Cancel", "Keeps the color as it was"},
      {&PBother, "PBother", 189, 14, 80, 20, kLockRight, kNoPage, "Other...", "Chooses any color"},
      {&Separator1, "Separator1", 162, 14, 4, 140, kLockNone, kNoPage, "", "Separator"},
  });
  PBok.Default(true);
  PBcancel.Cancel(true);
  Canvas1.Paint = Handler(this, &WindowSelectColor::Canvas1_Paint);
  Canvas1.MouseDown = Handler(this, &WindowSelectColor::Canvas1_MouseDown);
  PBok.Action = Handler(this, &WindowSelectColor::PBok_Action);
  PBcancel.Action = Handler(this, &WindowSelectColor::PBcancel_Action);
  PBother.Action = Handler(this, &WindowSelectColor::PBother_Action);
}

void WindowSelectColor::Event_Open() {
  color12 = {0x000000, 0x808080, 0xFFFFFF, 0x2E00FF, 0x9E6429, 0x00FFFF,
             0x00FF00, 0xFF00FF, 0xFF7800, 0x8C0084, 0xFF0000, 0xF9FF00};
}

bool WindowSelectColor::Event_CancelClose(bool appQuitting) {
  PBcancel_Action();
  return !appQuitting;
}

void WindowSelectColor::Canvas1_Paint(Graphics& g) {
  const auto field = [&g](Color color, int x, int y, int width) {
    g.ForeColor = color;
    g.FillRect(x, y, width, kCell);
    g.ForeColor = kBlack;
    g.DrawRect(x, y, width, kCell);
  };
  field(selectedcolor, kGap, kGap, (kCell + kGap) * (kColumns - 1) + kCell);
  for (int c = 0; c < kColumns; ++c)
    for (int r = 0; r < kRows; ++r) field(static_cast<Color>(color12(c * kRows + r)), FieldLeft(c), FieldTop(r), kCell);
}

bool WindowSelectColor::Canvas1_MouseDown(int x, int y) {
  int hit = -1;
  for (int c = 0; c < kColumns; ++c)
    for (int r = 0; r < kRows; ++r)
      if (FieldLeft(c) <= x && FieldTop(r) <= y && x <= FieldLeft(c) + kCell && y <= FieldTop(r) + kCell)
        hit = c * kRows + r;
  if (hit >= 0) {
    selectedcolor = static_cast<Color>(color12(hit));
    Canvas1.Refresh(true);
  }
  return false;
}

void WindowSelectColor::PBok_Action() {
  NotCancelled = true;
  Visible(false);
}

void WindowSelectColor::PBcancel_Action() {
  NotCancelled = false;
  Visible(false);
}

void WindowSelectColor::PBother_Action() {
  NotCancelled = SelectColor(selectedcolor, "Select Color...");
  Visible(false);
}
