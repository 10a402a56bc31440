// Real keys and clicks that arrive while a handler refreshes the screen. They are sent through an X server, because the
// toolkit delays only events of the window system.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/widgets/Application.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "tests/support/Testing.h"
// Last: it defines macros with common names.
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace {

using namespace platform;
namespace user = platform::testing;

class Board : public platform::Window {
 public:
  Board() : platform::Window({.title = "Board", .width = 300, .height = 200}) {
    CreateControls({
        {&canvas, "Canvas1", 10, 10, 100, 80, kLockLeftTop, kNoPage},
        {&work, "Work", 10, 120, 80, 18, kLockLeftTop, kNoPage, "Work"},
        {&ok, "Ok", 110, 120, 80, 18, kLockLeftTop, kNoPage, "Ok"},
        {&disabled, "Disabled", 210, 120, 80, 18, kLockLeftTop, kNoPage, "Disabled"},
    });
    work.Action = [this] {
      happened += '(';
      handler();
      happened += ')';
    };
    ok.Action = [this] { happened += 'o'; };
    disabled.Action = [this] { happened += 'd'; };
  }
  bool Event_KeyDown(const String& key) override {
    happened += key.Utf8();
    return true;
  }

  Canvas canvas;
  PushButton work, ok, disabled;
  std::function<void()> handler;
  std::string happened;
};

class Question : public platform::Window {
 public:
  Question() : platform::Window({.title = "Question", .width = 100, .height = 100}) {}
};

class InputDuringHandlers : public ::testing::Test {
 protected:
  InputDuringHandlers() : display(XOpenDisplay(nullptr)), board(New<Board>()) {
    board.Show();
    user::Activate(board);
  }
  ~InputDuringHandlers() override {
    while (WindowCount() > 0) WindowAt(0).Close();
    user::ProcessEvents();
    XCloseDisplay(display);
  }

  void Click(RectControl& control) {
    const auto [x, y] = user::CentreOnScreen(control);
    XTestFakeMotionEvent(display, -1, x, y, 0);
    XTestFakeButtonEvent(display, 1, True, 0);
    XTestFakeButtonEvent(display, 1, False, 0);
    XSync(display, False);
  }
  void Key(KeySym symbol) {
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), True, 0);
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), False, 0);
    XSync(display, False);
  }
  /// Input in the middle of a handler that refreshes the canvas until its time is over.
  void WorkUnderInput(int milliseconds) {
    const auto begin = std::chrono::steady_clock::now();
    const auto refreshUntil = [&](int end) {
      while (std::chrono::steady_clock::now() < begin + std::chrono::milliseconds(end)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        board.canvas.Refresh();
      }
    };
    refreshUntil(40);
    Key(XK_a);
    Click(board.ok);
    Click(board.disabled);
    Key(XK_b);
    board.disabled.Enabled(false);
    refreshUntil(milliseconds);
    stalled = std::chrono::steady_clock::now() > begin + std::chrono::milliseconds(milliseconds + 250);
  }
  /// Retries if the machine stalled: the short handler may have become a long one.
  void ExpectAllKept() {
    for (int attempt = 0; attempt < 20; ++attempt) {
      Click(board.work);
      EXPECT_TRUE(user::WaitUntil([&] { return board.happened.find(')') != std::string::npos; }));
      if (!stalled) {
        // No other event comes that could wake up the event loop.
        EXPECT_TRUE(user::WaitUntil([&] { return board.happened == "()aob"; })) << board.happened;
        return;
      }
      Key(XK_z);  // comes after all other input
      EXPECT_TRUE(user::WaitUntil([&] { return board.happened.find('z') != std::string::npos; }));
      board.happened.clear();
      board.disabled.Enabled(true);
    }
    FAIL() << "the machine stalled every time";
  }
  void ExpectAllDropped() {
    Click(board.work);
    EXPECT_TRUE(user::WaitUntil([&] { return board.happened.find(')') != std::string::npos; }));
    Key(XK_z);
    EXPECT_TRUE(user::WaitUntil([&] { return board.happened.find('z') != std::string::npos; }));
    EXPECT_EQ(board.happened, "()z");
  }

  Display* display;
  Board& board;
  bool stalled = false;  ///< the last WorkUnderInput took much longer than it should
};

TEST_F(InputDuringHandlers, WaitsForTheEndOfAShortOne) {
  board.handler = [&] { WorkUnderInput(150); };
  ExpectAllKept();
}

TEST_F(InputDuringHandlers, IsDroppedByOneThatBecomesLongAfterItsLastRefresh) {
  board.handler = [&] {
    WorkUnderInput(150);
    std::this_thread::sleep_for(std::chrono::milliseconds(450));
  };
  ExpectAllDropped();
}

TEST_F(InputDuringHandlers, TheTimeOfADialogDoesNotCount) {
  board.handler = [&] {
    auto& dialog = New<Question>();
    user::Later([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(600));
      dialog.Close();
    });
    dialog.ShowModal();
    WorkUnderInput(150);
  };
  ExpectAllKept();
}

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  platform::StartToolkit(argv);
  platform::Application program;  // the toolkit ends with it
  program.Open();
  return RUN_ALL_TESTS();
}
