// Windows and controls, driven as a user would, on the toolkit's offscreen platform.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <set>
#include <thread>

#include "platform/values/FileType.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Inputs.h"
#include "platform/widgets/Listbox.h"
#include "platform/widgets/Screen.h"
#include "platform/widgets/Timer.h"
#include "tests/support/Testing.h"

namespace {

using namespace platform;
namespace user = platform::testing;

/// Keeps a handler running long enough for the next refresh to process screen events.
void WorkFor(int milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

class Board : public Window {
 public:
  explicit Board(const WindowSettings& settings = {.title = "Board", .width = 400, .height = 300}) : Window(settings) {
    CreateControls({
        {&canvas, "Canvas1", 10, 10, 100, 80, kLockLeftTop, kNoPage},
        {&list, "List", 120, 10, 270, 150, kLockAll, kNoPage},
        {&save, "Save", 20, 270, 80, 18, kLockLeftBottom, kNoPage, "Save"},
        {&ok, "Ok", 300, 270, 80, 18, kLockRightBottom, kNoPage, "R&D"},
        {&menu, "Menu", 10, 100, 90, 20, kLockNone, kNoPage},
        {&slider, "Slider", 10, 130, 90, 16, kLockNone, kNoPage},
        {&check, "Check", 10, 160, 90, 20, kLockNone, kNoPage, "Scale Up"},
    });
    CreateControl(timer, "Timer1");
  }
  void Event_Resized() override { ++resizes; }
  bool Event_KeyDown(const String& key) override {
    keys.push_back(Asc(key));
    return false;
  }
  void Event_DropObject(DragItem& items, int) override {
    for (bool more = items.FolderItemAvailable(); more; more = items.NextItem())
      dropped.push_back(items.FolderItem()->Path().string());
  }

  Canvas canvas;
  Listbox list;
  PushButton save, ok;
  PopupMenu menu;
  Slider slider;
  CheckBox check;
  Timer timer{1};
  int resizes = 0;
  std::vector<int> keys;
  std::vector<std::string> dropped;
};

class Widgets : public ::testing::Test {
 protected:
  Widgets() : board(New<Board>()) { user::ProcessEvents(); }
  ~Widgets() override {
    while (WindowCount() > 0) WindowAt(0).Close();
    user::ProcessEvents();
  }
  Board& board;
};

TEST_F(Widgets, ARefreshShowsAWindowThatTheHandlerHasJustMade) {
  bool painted = false;
  board.save.Action = [&] {
    auto& late = New<Board>();
    late.canvas.Paint = [&](Graphics&) { painted = true; };
    late.canvas.Refresh();
    EXPECT_TRUE(painted);
  };
  user::Click(board.save);
  EXPECT_TRUE(painted);
}

TEST_F(Widgets, AWindowShownByAHandlerComesUpWhenTheHandlerHasGivenItItsSize) {
  auto& other = New<Board>();
  board.Hide();
  other.save.Action = [&] {
    board.Show();
    EXPECT_TRUE(board.Visible());
    EXPECT_FALSE(user::IsOnScreen(board));
    board.Width(600);
    WorkFor(40);
    other.canvas.Refresh();
    EXPECT_TRUE(user::IsOnScreen(board)) << "a long handler does not delay it";
  };
  user::Click(other.save);
  EXPECT_TRUE(user::IsOnScreen(board));
}

TEST_F(Widgets, AnInvalidRowIsPaintedWhereTheListHasScrolledIt) {
  board.list.Setup({.columnWidths = "100"});  // fixed: a column that is resized is painted later
  std::set<int> painted;
  board.list.CellBackgroundPaint = [&](Graphics&, int row, int) { return painted.insert(row).second; };
  for (int row = 0; row < 40; ++row) board.list.AddRow("");
  board.list.Refresh();
  user::ProcessEvents();
  ASSERT_TRUE(painted.contains(5));
  painted.clear();
  board.list.InvalidateCell(5, -1);
  user::Wheel(board.list, 5, 50, -1);
  EXPECT_TRUE(user::WaitUntil([&] { return painted.contains(5); }));
}

TEST_F(Widgets, TimersTickBetweenHandlersOnly) {
  int ticks = 0;
  board.timer.Action = [&] { ++ticks; };
  board.timer.Mode(Timer::kModeMultiple);
  board.timer.Enabled(true);
  board.save.Action = [&] {
    const int before = ticks;
    WorkFor(40);
    board.canvas.Refresh();
    EXPECT_EQ(ticks, before);
  };
  user::Click(board.save);
  const int after = ticks;
  EXPECT_TRUE(user::WaitUntil([&] { return ticks > after + 1; }));
  board.timer.Mode(Timer::kModeSingle);
  const int single = ticks;
  EXPECT_TRUE(user::WaitUntil([&] { return ticks == single + 1; }));
  EXPECT_FALSE(user::WaitUntil([&] { return ticks > single + 1; }, 20));
}

TEST_F(Widgets, AFrameScrollsAContentThatTheScreenCannotHold) {
  const Screen screen(0);
  const int bottom = screen.AvailableTop() + screen.AvailableHeight();
  const auto size = [&] { return std::make_pair(board.Width(), board.Height()); };
  board.Top(200);
  board.Width(600);
  board.Height(2 * screen.AvailableHeight());
  EXPECT_EQ(board.resizes, 2);
  EXPECT_EQ(size(), std::make_pair(600, 2 * screen.AvailableHeight()));
  EXPECT_EQ(board.list.Height(), 150 - 300 + board.Height());
  Rect part = user::ShownPart(board);
  EXPECT_EQ(part.width, 600) << "the scroll bar takes nothing from the width";
  EXPECT_GT(part.height, screen.AvailableHeight() - 10);
  EXPECT_LE(board.Top() + part.height, bottom);

  user::Wheel(board.canvas, 5, 5, -1);
  const int scrolled = user::ShownPart(board).y;
  EXPECT_GT(scrolled, 0);
  for (int i = 0; i < 500; ++i) board.list.AddRow(Str(i));
  user::ProcessEvents();
  for (const int notches : {-1, 1, 1, 1}) user::Wheel(board.list, 5, 200, notches);
  for (const int notches : {1, -1, -1}) user::Wheel(board.slider, 5, 5, notches);
  EXPECT_EQ(user::ShownPart(board).y, scrolled) << "a list and a slider keep the wheel, at their ends too";

  board.SetFocus();
  user::Key(board, "Down");
  EXPECT_EQ(board.keys, std::vector<int>{31}) << "the arrows are the window's";

  // The user makes the frame smaller than the least content, then larger.
  board.MinWidth(500);
  board.MinHeight(1000);
  user::ResizeFrame(board, 300, 700);
  EXPECT_EQ(size(), std::make_pair(500, 1000));
  EXPECT_EQ(board.resizes, 3);
  user::ResizeFrame(board, 300, 600);
  EXPECT_EQ(board.resizes, 3) << "neither side of the content has changed";
  user::ResizeFrame(board, 620, 600);
  part = user::ShownPart(board);
  EXPECT_EQ(size(), std::make_pair(part.width, 1000));
  EXPECT_LT(part.width, 620) << "beside the scroll bar";
  user::ResizeFrame(board, 620, 1100);
  EXPECT_EQ(size(), std::make_pair(620, 1100)) << "the scroll bar has vanished";
  user::ResizeFrame(board, 620, 600);
  EXPECT_EQ(size(), std::make_pair(part.width, 1000)) << "beside the scroll bar again";
  board.MinHeight(64);
  board.Height(300);
  EXPECT_EQ(user::ShownPart(board), (Rect{0, 0, part.width, 300}));
}

TEST_F(Widgets, AWindowOfFixedSizeStaysWhereItIsWhenItBecomesTooLarge) {
  class Fixed : public Window {
   public:
    Fixed() : Window({.width = 200, .height = 200, .resizeable = false}) {}
  };
  const Screen screen(0);
  const int left = screen.AvailableLeft() + screen.AvailableWidth() - 50;
  auto& fixed = New<Fixed>();
  fixed.Left(left);
  fixed.Top(300);
  user::ProcessEvents();
  fixed.Width(screen.AvailableWidth() + 100);
  fixed.Height(screen.AvailableHeight());
  EXPECT_EQ((Rect{fixed.Left(), fixed.Top(), fixed.Width(), fixed.Height()}),
            (Rect{left, 300, screen.AvailableWidth() + 100, screen.AvailableHeight()}));
  const Rect part = user::ShownPart(fixed);
  EXPECT_EQ(part.x + part.y, 0);
  EXPECT_LT(part.width, 200);
  EXPECT_LE(fixed.Top() + part.height, screen.AvailableTop() + screen.AvailableHeight());
  EXPECT_GT(part.height, screen.AvailableHeight() - 350);
}

TEST_F(Widgets, KeysThatNoControlUsesReachTheWindow) {
  board.SetFocus();
  // Tab leads to a button, which leaves the arrow keys to the window.
  for (const char* key : {"Left", "Right", "Up", "Down", "q", "Tab", "Tab", "Down"}) user::Key(board, key);
  EXPECT_EQ(board.keys, (std::vector<int>{28, 29, 30, 31, 'q', 31}));

  std::string pressed;
  board.save.Action = [&] { pressed += "save "; };
  board.ok.Action = [&] { pressed += "ok "; };
  board.list.GotFocus = [&] { board.SetFocus(); };  // a list that passes the focus on does not stop Tab
  board.ok.Default(true);
  board.SetFocus();
  for (const char* key : {"Tab", "Space"}) user::Key(board, key);
  board.SetFocus();
  user::Key(board, "Return");
  board.ok.Visible(false);
  board.SetFocus();
  user::Key(board, "Return");
  EXPECT_EQ(pressed, "save ok ");
}

TEST_F(Widgets, AListKeepsChecksAndTagsWithTheirRowsWhenSorted) {
  Listbox& list = board.list;
  list.Setup({.columnWidths = "0,100,*", .headings = {"x", "Name", "Rest"}, .multipleSelection = true});
  list.ColumnType(1, Listbox::kTypeCheckBox);
  list.ColumnType(2, Listbox::kTypeEditable);
  int changes = 0, actions = 0;
  list.Change = [&] { ++changes; };
  list.CellAction = [&](int row, int column) { actions += 10 * row + column; };
  int i = 0;
  for (const char* name : {"beta", "Alpha", "alpha", "Beta"}) {
    list.AddRow(Str(9 - i));
    list.Cell(i++, 1, name);
  }
  list.CellTag(3, 1, true);
  user::ClickCellCheck(list, 3, 1);
  list.CellCheck(0, 1, true);
  EXPECT_EQ(actions, 31) << "of the click alone";
  EXPECT_EQ(changes, 0);
  user::ClickHeader(list, 1);  // without a handler a heading cannot be pressed
  EXPECT_EQ(list.Cell(0, 1), "beta");
  list.HeaderPressed = [&](int column) {
    if (column > 0) list.PressHeader(0);
    return false;
  };
  user::ClickHeader(list, 1);  // by number first: Beta 6, alpha 7, Alpha 8, beta 9; then by name
  std::string rows;
  for (int row = 0; row < 4; ++row)
    rows += list.Cell(row, 1).Utf8() + (list.CellCheck(row, 1) ? "+" : "") + (list.CellTag(row, 1) ? "! " : " ");
  EXPECT_EQ(rows, "alpha Alpha Beta+! beta+ ");

  list.CellClick = [](int row, int, int, int) { return row == 1; };
  user::ClickCell(list, 1, 2, 20, 5);  // suppressed by CellClick
  user::ClickCell(list, 2, 2, 21, 6);
  list.Selected(0, true);
  EXPECT_EQ(list.SelCount(), 2);
  EXPECT_EQ(changes, 2);
  list.RemoveRow(1);
  EXPECT_TRUE(list.Selected(0) && list.Selected(1));
  list.DeleteAllRows();
  list.AddRow("");
  user::EditCell(list, 0, 2, "olivine");
  EXPECT_TRUE(list.Cell(0, 2).Identical("olivine"));
  EXPECT_EQ(actions, 33);
}

TEST_F(Widgets, AListIgnoresKeysThatItDoesNotNeed) {
  Listbox& list = board.list;
  list.Setup({.columnWidths = "40,*", .headings = {"Edit", "Name"}});
  for (const char* row : {"1", "2"}) list.AddRow(row);
  // After Tab the arrows move through the rows, until a key or the mouse leaves the list. A click does not enter it.
  const std::function<void()> ways[] = {[&] { user::ClickCell(board.list, 0, 0, 5, 5); },
                                        [&] { user::Key(board, "Escape"); }, [&] { user::Click(board.canvas, 5, 5); },
                                        [&] { user::Click(board.save); }};
  for (const auto& leave : ways) {
    board.SetFocus();
    for (const char* key : {"Tab", "Up", "Down"}) user::Key(board, key);
    leave();
    board.keys.clear();
    for (const char* key : {"Down", "Up"}) user::Key(board, key);
    EXPECT_EQ(board.keys, (std::vector<int>{31, 30}));
  }
  user::Key(board, "Ctrl+C");
  EXPECT_TRUE(user::Clipboard().Empty());
  user::ClickCell(list, 0, 0, 5, 5);
  EXPECT_EQ(list.SelCount(), 1);
  user::Click(list, 50, list.Height() - 10);  // below the rows
  EXPECT_EQ(list.SelCount(), 0);
  list.Change = [] {};  // a list whose selection matters keeps its arrows
  user::ClickCell(list, 0, 0, 5, 5);
  user::Key(board, "Down");
  EXPECT_TRUE(list.Selected(1));
}

TEST_F(Widgets, InputsRaiseWhatTheirContractSays) {
  int changes = 0;
  board.menu.Change = board.slider.ValueChanged = board.check.Action = [&] { ++changes; };
  board.menu.AddRow("RGB");
  EXPECT_EQ(board.menu.ListIndex(), -1);
  for (int i = 0; i < 2; ++i) board.menu.ListIndex(0);
  EXPECT_EQ(changes, 2) << "a menu raises Change at every choice";
  board.slider.Setup({.minimum = -10, .value = -3, .maximum = 10});
  for (int i = 0; i < 2; ++i) board.slider.Value(4);
  EXPECT_EQ(changes, 3) << "a slider raises ValueChanged only for another value";
  board.check.Value(true);
  EXPECT_EQ(changes, 3) << "a check box raises Action only for clicks";
  user::Toggle(board.check);
  EXPECT_FALSE(board.check.Value());
  EXPECT_EQ(changes, 4);
}

TEST_F(Widgets, DroppedFilesArriveInOrderWhateverTheirNames) {
  RegisterFileType({.Name = "image/tiff", .Extensions = ".jfx;.tif;.tiff"});
  board.AcceptFileDrop("Image/TIFF");
  user::Drop(board, {"/tmp/readme.txt", "/tmp/tif"});
  user::Drop(board, {"elsewhere/tmp/Fe.tif"});  // a file of another machine
  user::Drop(board, {});
  EXPECT_TRUE(board.dropped.empty());
  const std::vector<std::string> odd = {"/tmp/b #1 100%25.TIF", "/tmp/a\xFF\xFE.tiff", "/tmp/\xC3\xBC+?;.jfx"};
  user::Drop(board, {odd[0], "/tmp/skipped.png", odd[1], odd[2]});
  EXPECT_EQ(board.dropped, odd);
}

}  // namespace

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  ::testing::InitGoogleTest(&argc, argv);
  StartToolkit(argv);
  Application program;  // the toolkit ends with it
  program.Open();
  return RUN_ALL_TESTS();
}
