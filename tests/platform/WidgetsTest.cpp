// Windows and controls, driven as a user would, on the toolkit's offscreen platform.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "platform/Application.h"
#include "platform/Buttons.h"
#include "platform/Canvas.h"
#include "platform/Dialogs.h"
#include "platform/Displays.h"
#include "platform/FileType.h"
#include "platform/Inputs.h"
#include "platform/Listbox.h"
#include "platform/Screen.h"
#include "platform/Testing.h"
#include "platform/Timer.h"

namespace {

using namespace platform;
namespace user = platform::testing;

/// Keeps a handler busy long enough for the next refresh to serve the screen.
void WorkFor(int milliseconds) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  while (std::chrono::steady_clock::now() < end) {
  }
}

class Board : public Window {
 public:
  explicit Board(const WindowSettings& settings = {.title = "Board", .width = 400, .height = 300}) : Window(settings) {
    CreateControls({
        {&panel, "Panel", 0, 200, 400, 60, kLockNone, kNoPage},
        {&canvas, "Canvas1", 10, 10, 100, 80, kLockLeftTop, kNoPage},
        {&list, "List", 120, 10, 270, 150, kLockAll, kNoPage},
        {&save, "Save", 20, 270, 80, 18, kLockLeftBottom, kNoPage, "Save"},
        {&ok, "Ok", 300, 270, 80, 18, kLockRightBottom, kNoPage, "R&D"},
        {&first, "First", 20, 210, 80, 18, kLockNone, 0, "First"},
        {&second, "Second", 20, 210, 80, 18, kLockNone, 1, "Second"},
    });
    CreateControl(timer, "Timer1");
    panel.PanelCount(2);
    canvas.Paint = [this](Graphics& g) {
      ++paints;
      g.ForeColor = 0x112233;
      g.FillRect(0, 0, g.Width(), g.Height());
    };
  }
  bool Event_CancelClose(bool quitting) override {
    ++(quitting ? quitQuestions : closeQuestions);
    return keeps;
  }
  void Event_Resized() override {
    ++resizes;
    listHeightSeen = list.Height();
  }
  bool Event_KeyDown(const String& key) override {
    keys.Append(Asc(key));
    return false;
  }
  void Event_DropObject(DragItem& items, int) override {
    for (bool more = items.FolderItemAvailable(); more; more = items.NextItem())
      dropped.push_back(items.FolderItem()->Path().string());
  }

  PagePanel panel;
  Canvas canvas;
  Listbox list;
  PushButton save, ok, first, second;
  Timer timer{1};
  int paints = 0, resizes = 0, listHeightSeen = 0, closeQuestions = 0, quitQuestions = 0;
  bool keeps = false;
  Array<int> keys;
  std::vector<std::string> dropped;
};

class Widgets : public ::testing::Test {
 protected:
  Widgets() : board(New<Board>()) {
    user::ProcessEvents();
    Dialogs() = {};
    Dialogs().msgBox = [this](const String& text) { messages.Append(text); };
  }
  ~Widgets() override {
    while (WindowCount() > 0) WindowAt(0).Close();
    user::ProcessEvents();
    Dialogs() = {};
  }
  Array<String> messages;
  Board& board;
};

TEST_F(Widgets, ARefreshInsideAHandlerPaintsAtOnce) {
  user::TakeRepaints(board.canvas);
  const int before = board.paints;
  board.save.Action = [&] {
    board.canvas.Refresh();
    EXPECT_EQ(board.paints, before + 1);
    EXPECT_EQ(user::TakeRepaints(board.canvas), (std::vector<Rect>{{0, 0, 100, 80}}));
  };
  user::Click(board.save);
  EXPECT_EQ(board.paints, before + 1);

  // A window that a handler has just made and shown is on the screen after its refresh.
  board.save.Action = [] {
    auto& late = New<Board>();
    late.Show();
    late.canvas.Refresh();
    EXPECT_EQ(late.paints, 1);
    EXPECT_EQ(late.canvas.Image()->RGBSurface().Pixel(5, 5), 0x112233U);
  };
  user::Click(board.save);
}

TEST_F(Widgets, LiveDrawingTouchesItsRectanglesAndAPaintWipesIt) {
  board.canvas.Refresh();
  user::TakeRepaints(board.canvas);
  const int paints = board.paints;
  Graphics& live = board.canvas.Graphics();
  live.ForeColor = 0xFF0000;
  live.FillRect(3, 4, 5, 6);
  live.FillRect(60, 50, 10, 10);
  FlushCanvases();
  EXPECT_EQ(user::TakeRepaints(board.canvas), (std::vector<Rect>{{3, 4, 5, 6}, {60, 50, 10, 10}}));
  EXPECT_EQ(board.paints, paints);
  const auto shot = user::Shot(board.canvas);
  EXPECT_EQ(shot->RGBSurface().Pixel(3, 4), 0xFF0000U);
  EXPECT_EQ(shot->RGBSurface().Pixel(2, 4), 0x112233U);

  board.canvas.Refresh();
  EXPECT_EQ(board.canvas.Image()->RGBSurface().Pixel(3, 4), 0x112233U);
  EXPECT_EQ(board.canvas.Graphics().ForeColor, 0xFF0000U);

  board.canvas.Width(0);
  board.canvas.Height(0);
  board.canvas.Graphics().FillRect(0, 0, 5, 5);
  board.canvas.Refresh();
  board.canvas.Width(20);
  board.canvas.Height(10);
  board.canvas.Graphics().FillRect(0, 0, 5,
                                   5);  // not yet painted at this size: the paint that is due comes all the same
  FlushCanvases();
  user::ProcessEvents();
  EXPECT_EQ(board.canvas.Image()->RGBSurface().Pixel(1, 1), 0x112233U);
  EXPECT_EQ(board.canvas.Image()->Width(), 20);
}

TEST_F(Widgets, ADragIsClaimedByTheAnswerOfThePress) {
  std::string told;
  bool claims = true;
  const auto tell = [&](const char* what) { return [&told, what](int, int) { told += what; }; };
  board.canvas.MouseDown = [&](int x, int) {
    told += "d" + std::to_string(x);
    return claims;
  };
  board.canvas.MouseDrag = tell("g");
  board.canvas.MouseUp = tell("u");
  board.canvas.MouseMove = tell("m");
  board.canvas.MouseEnter = [&] { told += "e"; };
  board.canvas.MouseExit = [&] { told += "x"; };
  user::MouseMove(board.canvas, 5, 5);
  EXPECT_EQ(told, "em");
  user::MousePress(board.canvas, 9, 9);
  user::MouseDragTo(board.canvas, 12, 12);
  user::MouseRelease(board.canvas, 12, 12);
  EXPECT_EQ(told, "emmd9gu");
  claims = false;
  told.clear();
  user::MousePress(board.canvas, 20, 9);
  user::MouseDragTo(board.canvas, 30, 12);
  user::MouseRelease(board.canvas, 30, 12);
  user::MouseLeave(board.canvas);
  EXPECT_EQ(told, "md20x");
}

TEST_F(Widgets, AClickDuringALongHandlerIsGone) {
  int clicks = 0;
  board.ok.Action = [&] { ++clicks; };
  board.save.Action = [&] {
    user::PostClick(board.ok);
    WorkFor(40);
    board.canvas.Refresh();
    EXPECT_EQ(clicks, 0);
  };
  user::Click(board.save);
  user::ProcessEvents();
  EXPECT_EQ(clicks, 0);
  user::Click(board.ok);
  EXPECT_EQ(clicks, 1);
}

TEST_F(Widgets, TimersTickBetweenHandlersOnly) {
  int ticks = 0;
  board.timer.Action = [&] { ++ticks; };
  board.timer.Mode(Timer::kModeMultiple);
  board.timer.Enabled(true);
  board.save.Action = [&] {
    const int before = ticks;
    for (int i = 0; i < 3; ++i) {
      WorkFor(40);
      board.canvas.Refresh();
    }
    EXPECT_EQ(ticks, before);
  };
  user::Click(board.save);
  const int after = ticks;
  EXPECT_TRUE(user::WaitUntil([&] { return ticks > after; }));
  board.timer.Mode(Timer::kModeSingle);
  const int single = ticks;
  EXPECT_TRUE(user::WaitUntil([&] { return ticks == single + 1; }));
  EXPECT_FALSE(user::WaitUntil([&] { return ticks > single + 1; }, 20));
}

TEST_F(Widgets, ControlsFollowTheWindowByTheirLocks) {
  for (const bool visible : {true, false}) {
    SCOPED_TRACE(visible);
    board.Visible(visible);
    const int resizes = board.resizes;
    board.Width(board.Width() + 50);
    board.Height(board.Height() + 30);
    EXPECT_EQ(board.resizes, resizes + 2);
    EXPECT_EQ(board.listHeightSeen, board.list.Height());
  }
  EXPECT_EQ(board.list.Left(), 120);
  EXPECT_EQ(board.list.Width(), 370);
  EXPECT_EQ(board.list.Height(), 210);
  EXPECT_EQ(board.save.Left(), 20);
  EXPECT_EQ(board.save.Top(), 330);
  EXPECT_EQ(board.ok.Left(), 400);
  EXPECT_EQ(board.ok.Width(), 80);
  EXPECT_EQ(board.canvas.Width(), 100);
  board.Show();
  user::ProcessEvents();
  EXPECT_EQ(board.Width(), 500);
  EXPECT_EQ(board.list.Width(), 370);
}

TEST_F(Widgets, ASizeBeyondTheLimitsIsSetAndTheNewLimitsHold) {
  board.MinWidth(400);
  board.MaxWidth(400);
  board.Width(650);
  EXPECT_EQ(board.Width(), 650);
  board.MinWidth(650);
  board.MaxWidth(650);
  user::ProcessEvents();
  EXPECT_EQ(board.Width(), 650);
  EXPECT_EQ(user::Shot(board)->Width(), 650);
  board.Width(400);
  board.MinWidth(400);
  board.MaxWidth(400);
  user::ProcessEvents();
  EXPECT_EQ(board.Width(), 400);
  board.MaxWidth(300);
  EXPECT_EQ(board.Width(), 300);
}

TEST_F(Widgets, OnlyTheControlsOfThePageInForceAreThere) {
  int clicks = 0;
  board.first.Action = [&] { ++clicks; };
  board.second.Action = [&] { clicks += 100; };
  user::Click(board.first);
  board.panel.Value(1);
  user::Click(board.first);  // the second one is in its place now
  EXPECT_EQ(clicks, 101);
  EXPECT_TRUE(board.first.Visible());
  board.panel.Top(150);
  EXPECT_EQ(board.first.Top(), 160);
  EXPECT_THROW(board.panel.Value(2), OutOfBoundsException);
}

TEST_F(Widgets, KeysThatNoControlUsesReachTheWindow) {
  board.SetFocus();
  for (const char* key : {"Left", "Right", "Up", "Down", "q"}) user::Key(board, key);
  user::Key(board, "Tab");  // to a button, which leaves the arrows to the window
  user::Key(board, "Tab");
  user::Key(board, "Down");
  ASSERT_EQ(board.keys.Ubound(), 5);
  for (const int code : {28, 29, 30, 31, int{'q'}}) EXPECT_GE(board.keys.IndexOf(code), 0) << code;
  EXPECT_EQ(board.keys(5), 31);

  board.list.GotFocus = [&] { board.SetFocus(); };  // a list that never keeps the keyboard does not stop Tab
  board.SetFocus();
  int saves = 0;
  board.save.Action = [&] { ++saves; };
  user::Key(board, "Tab");
  user::Key(board, "Space");
  EXPECT_EQ(saves, 1);

  std::string pressed;
  board.ok.Default(true);
  board.save.Cancel(true);
  board.ok.Action = [&] { pressed += "ok "; };
  board.save.Action = [&] { pressed += "cancel "; };
  board.SetFocus();
  user::Key(board, "Return");
  user::Key(board, "Escape");
  board.ok.Visible(false);
  user::Key(board, "Return");
  EXPECT_EQ(pressed, "ok cancel ");
}

TEST_F(Widgets, AListKeepsChecksAndTagsWithTheirRowsWhenSorted) {
  Listbox& list = board.list;
  list.Setup({.columnWidths = "0,100,*", .headings = {"x", "Name", "Rest"}, .multipleSelection = true});
  list.ColumnType(1, Listbox::kTypeCheckBox);
  int changes = 0, actions = 0;
  list.Change = [&] { ++changes; };
  list.CellAction = [&](int row, int column) { actions += 10 * row + column; };
  int i = 0;
  for (const char* name : {"beta", "Alpha", "alpha", "Beta"}) {
    list.AddRow(Str(9 - i));
    list.Cell(i++, 1, name);
  }
  EXPECT_EQ(changes, 0);
  list.CellTag(3, 1, true);
  user::ClickCellCheck(list, 3, 1);
  EXPECT_TRUE(list.CellCheck(3, 1));
  EXPECT_EQ(actions, 31);
  EXPECT_EQ(list.SelCount(), 0);
  list.CellCheck(0, 1, true);
  EXPECT_EQ(actions, 31);

  user::ClickHeader(list, 1);  // without a handler a heading cannot be pressed
  EXPECT_EQ(list.Cell(0, 1), "beta");
  list.HeaderPressed = [&](int column) {
    if (column > 0) list.PressHeader(0);
    return false;
  };
  user::ClickHeader(list, 1);  // by number first: Beta 6, alpha 7, Alpha 8, beta 9; then by name
  Array<String> names;
  for (int row = 0; row < 4; ++row) names.Append(list.Cell(row, 1));
  EXPECT_TRUE(Join(names, " ").Identical("alpha Alpha Beta beta"));
  EXPECT_TRUE(list.CellCheck(2, 1) && list.CellTag(2, 1) && list.CellCheck(3, 1));
  EXPECT_FALSE(list.CellCheck(0, 1) || list.CellTag(3, 1));

  user::ClickCell(list, 2, 2, 20, 5);
  list.Selected(0, true);
  EXPECT_EQ(list.SelCount(), 2);
  EXPECT_EQ(changes, 2);
  list.RemoveRow(1);
  EXPECT_TRUE(list.Selected(1));
  list.DeleteAllRows();
  EXPECT_EQ(list.SelCount(), 0);
  EXPECT_EQ(changes, 4);
  EXPECT_THROW(list.Cell(0, 0), OutOfBoundsException);
  list.InvalidateCell(5, 17);
}

TEST_F(Widgets, AListPaintsItsCellsAndHandsOutClicks) {
  Listbox& list = board.list;
  list.Setup({.columnWidths = "60,60", .headings = {"a", "b"}, .defaultRowHeight = 32, .gridLines = true});
  list.AddRow("");
  list.AddRow("");
  Rect size;
  list.CellBackgroundPaint = [&](Graphics& g, int row, int column) {
    size = {0, 0, g.Width(), g.Height()};
    g.ForeColor = column == 1 ? 0x00FF00U : kWhite;
    if (row == 1) g.FillRect(0, 0, 10, g.Height());
    return false;
  };
  const auto shot = user::Shot(list);
  const Rect cell = user::CellRect(list, 1, 1);
  EXPECT_EQ(size, (Rect{0, 0, 59, 31}));
  EXPECT_EQ(shot->RGBSurface().Pixel(cell.x + 9, cell.y), 0x00FF00U);
  EXPECT_EQ(shot->RGBSurface().Pixel(cell.x + 10, cell.y), kWhite);

  std::string clicked;
  bool stops = true;
  list.CellClick = [&](int row, int column, int x, int y) {
    clicked = std::to_string(row) + std::to_string(column) + "@" + std::to_string(x) + "," + std::to_string(y);
    return stops;
  };
  board.SetFocus();
  list.GotFocus = [&] { board.SetFocus(); };
  user::ClickCell(list, 1, 1, 7, 8);
  EXPECT_EQ(clicked, "11@7,8");
  EXPECT_EQ(list.SelCount(), 0);
  user::Key(board, "Down");
  EXPECT_EQ(board.keys.IndexOf(31), 0);
  stops = false;
  user::ClickCell(list, 1, 0, 7, 8);
  EXPECT_TRUE(list.Selected(1));

  int edited = -1;
  list.ColumnType(0, Listbox::kTypeEditable);
  list.CellAction = [&](int row, int) { edited = row; };
  user::EditCell(list, 1, 0, "olivine");
  EXPECT_TRUE(list.Cell(1, 0).Identical("olivine"));
  EXPECT_EQ(edited, 1);
}

TEST_F(Widgets, InputsRaiseWhatTheirContractSays) {
  class Inputs : public Window {
   public:
    Inputs() : Window({.width = 200, .height = 100}) {
      CreateControls({{&menu, "Menu", 10, 10, 90, 20, {}, kNoPage},
                      {&slider, "Slider", 10, 40, 90, 16, {}, kNoPage},
                      {&check, "Check", 10, 60, 90, 20, {}, kNoPage, "Scale Up"}});
    }
    PopupMenu menu;
    Slider slider;
    CheckBox check;
  };
  auto& inputs = New<Inputs>();
  int changes = 0;
  inputs.menu.Change = inputs.slider.ValueChanged = inputs.check.Action = [&] { ++changes; };
  inputs.menu.AddRow("RGB");
  inputs.menu.AddRow("CMY");
  EXPECT_EQ(inputs.menu.ListIndex(), -1);
  EXPECT_EQ(changes, 0);
  inputs.menu.ListIndex(0);
  inputs.menu.ListIndex(0);
  EXPECT_EQ(changes, 2);
  user::ChooseRow(inputs.menu, 1);
  EXPECT_EQ(inputs.menu.ListIndex(), 1);
  EXPECT_EQ(changes, 3);
  inputs.slider.Setup({.minimum = -10, .value = -3, .maximum = 10});
  EXPECT_EQ(changes, 3);
  inputs.slider.Value(4);
  inputs.slider.Value(4);
  EXPECT_EQ(changes, 4);
  inputs.check.Value(true);
  EXPECT_EQ(changes, 4);
  user::Click(inputs.check);
  EXPECT_FALSE(inputs.check.Value());
  EXPECT_EQ(changes, 5);
}

class Program : public Application {
 public:
  Program() {
    bar.Add({"FileMenu", nullptr, "File", "", false});
    bar.Add({"FileNew", "FileMenu", "New/Clear Images", "Cmd+N", true});
    bar.Add({"FileSave", "FileMenu", "Save & Go", "Cmd+S", false});
    MenuBar(&bar);
    AddMenuHandler("filenew", [this] {
      ++chosen;
      return false;
    });
    AddMenuHandler("FileSave", [this] {
      chosen += 10;
      return true;
    });
  }
  void Event_EnableMenuItems() override { bar.Item("FileSave").Enabled(saves); }
  platform::MenuBar bar;
  int chosen = 0;
  bool saves = false;
};

TEST_F(Widgets, MenusAreUpToDateAndTheirKeysWorkInEveryWindow) {
  auto& program = static_cast<Program&>(*Application::Current());
  auto& plain = New<Board>();
  user::ChooseMenu("FileSave");
  EXPECT_EQ(program.chosen, 0);
  program.saves = true;
  user::Key(plain, "Ctrl+S");  // the window carries no bar
  EXPECT_EQ(program.chosen, 10);
  plain.MenuBar(&program.bar);
  EXPECT_EQ(plain.Height(), 300);
  program.bar.Item("FileNew").Checked(true);
  user::Key(plain, "Ctrl+N");
  user::ChooseMenu("FileNew");
  EXPECT_EQ(program.chosen, 12);
  EXPECT_TRUE(program.bar.Item("FileNew").Checked());
  EXPECT_FALSE(program.ChooseMenuItem("FileMenu"));
  plain.MenuBar(nullptr);
  EXPECT_THROW(program.bar.Item("nothing"), NilObjectException);
  while (WindowCount() > 0) WindowAt(0).Close();
}

TEST_F(Widgets, AModalWindowHoldsItsCallerUntilItHides) {
  class Modal : public Board {
   public:
    Modal() : Board({.width = 400, .height = 300, .visible = false, .frame = Frame::MovableModal}) {}
  };
  auto& modal = New<Modal>();
  std::string order;
  modal.ok.Action = [&] {
    order += "ok ";
    modal.Visible(false);
  };
  board.save.Action = [&] {
    user::Later([&] { user::Click(modal.ok); });
    modal.ShowModal();
    order += "after";
  };
  user::Click(board.save);
  EXPECT_EQ(order, "ok after");
  EXPECT_FALSE(modal.Visible());
  EXPECT_EQ(WindowCount(), 2);
}

TEST_F(Widgets, AFailureInAHandlerIsReportedOnce) {
  board.save.Action = [] { throw std::runtime_error("no such map"); };
  user::Click(board.save);
  ASSERT_EQ(messages.Ubound(), 0);
  EXPECT_GT(InStr(messages(0), "no such map"), 0);
  Dialogs().msgBox = [](const String&) { throw std::runtime_error("no message either"); };
  user::Click(board.save);
  RectControl& unborn = *std::make_unique<PushButton>().release();
  EXPECT_THROW(unborn.Width(), NilObjectException);
  delete &unborn;
}

TEST_F(Widgets, DroppedFilesArriveInOrderWhateverTheirNames) {
  RegisterFileType({.Name = "image/tiff", .Extensions = ".jfx;.tif;.tiff"});
  board.AcceptFileDrop("Image/TIFF");
  EXPECT_TRUE(user::WouldAccept(board, {"/tmp/readme.txt", "/tmp/Fe.TIF"}));
  EXPECT_FALSE(user::WouldAccept(board, {"/tmp/readme.txt", "/tmp/tif"}));
  EXPECT_FALSE(user::WouldAccept(board, {}));
  const std::vector<std::string> odd = {"/tmp/b #1 100%25.tif", "/tmp/a\xFF\xFE.tiff", "/tmp/\xC3\xBC+?;.jfx"};
  user::Drop(board, {odd[0], "/tmp/skipped.png", odd[1], odd[2]});
  EXPECT_EQ(board.dropped, odd);
}

TEST_F(Widgets, TheCloseButtonAsksAndClosedWindowsLeaveTheListAtOnce) {
  board.keeps = true;
  user::CloseButton(board);
  EXPECT_EQ(board.closeQuestions, 1);
  EXPECT_EQ(WindowCount(), 1);
  class Single : public SingletonWindow<Single> {
   public:
    Single() : SingletonWindow({.visible = false}) {}
    int number = 0;
  };
  board.save.Action = [] {
    Single::Instance().number = 7;
    Single::Instance().Close();
    EXPECT_EQ(WindowCount(), 1);
    EXPECT_EQ(Single::Instance().number, 0);  // made anew
  };
  user::Click(board.save);
  EXPECT_EQ(WindowCount(), 2);
  EXPECT_EQ(&Single::Instance(), &WindowAt(1));
  board.save.Action = [&] { board.Close(); };  // its own end comes after the event
  user::Click(board.save);
  EXPECT_EQ(WindowCount(), 1);
}

TEST_F(Widgets, HeldKeysAndResourcesAreThere) {
  user::HoldKeys(false, true, false);
  EXPECT_TRUE(Keyboard::AsyncControlKey());
  EXPECT_FALSE(Keyboard::AsyncShiftKey());
  user::HoldKeys(false, false, false);
  const ResourceFork fork;
  for (const int id : {168, 169, 170, 171, 172}) EXPECT_GT(fork.GetPicture(id)->Width(), 0);
  for (const int id : {168, 173, 174, 177}) board.canvas.MouseCursor(fork.getCursor(id));
  EXPECT_THROW(fork.GetPicture(1), NilObjectException);
  for (RectControl* control : {&board.save, &board.ok}) EXPECT_TRUE(user::CaptionFits(*control));
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  ::testing::InitGoogleTest(&argc, argv);
  StartToolkit(argv);
  Program program;  // the toolkit ends with it
  program.Open();
  return RUN_ALL_TESTS();
}
