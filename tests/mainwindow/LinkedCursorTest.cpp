// The canvas, the mouse and the linked cursor, through real mouse and key events.

#include "platform/widgets/Screen.h"
#include "tests/support/VisibleState.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class LinkedCursorTest : public WindowsTest {
 protected:
  static std::vector<Color> PixelsOf(Canvas& canvas) {
    const auto image = canvas.Image();
    const auto view = image->Pixels();
    return {view.data, view.data + view.pitch * view.height};
  }
  void WaitForTick() {
    int ticks = 0;
    const auto action = main().Timer1.Action;
    main().Timer1.Action = [&] {
      action();
      ++ticks;
    };
    ASSERT_TRUE(user::WaitUntil([&] { return ticks > 0; }));
    main().Timer1.Action = action;
  }
};

/// A window for a map of any size at any height, larger than the screen.
class LargeWindow : public Window {
 public:
  LargeWindow() : Window({.resizeable = false}) {
    CreateControl({&canvas, "canvas", 1, 0, 70, 70, kLockLeftTop, kNoPage});
    for (int i = 0; i < 70 * 70; ++i) map->RGBSurface().Pixel(i % 70, i / 70, 12345U * i % 0x700000U);
    canvas.Paint = [this](Graphics& g) { DrawMap(g); };
    Width(Screen(0).AvailableWidth() + 1);
    Height(Screen(0).AvailableHeight() + 1);
  }
  void DrawMap(Graphics& g) { g.DrawPicture(map, 0, 0, g.Width(), g.Height(), 0, 0, 70, 70); }

  Canvas canvas;
  Ref<Picture> map = NewPicture(70, 70, 32);
};

TEST_F(LinkedCursorTest, NoTraceIsLeftOnTheScreenWhereverTheCanvasIs) {
  auto& window = New<LargeWindow>();
  user::ProcessEvents();
  user::ResizeFrame(window, 160, 160);
  for (int top = 0; top < 4; ++top)
    for (int size = 61; size < 65; ++size)
      for (const auto& [x, y] : {std::pair{0, 0}, {1, 2}, {2, 1}, {3, 3}}) {
        window.canvas.Top(top);
        window.canvas.Width(size);
        window.canvas.Height(size + 4);
        user::Scroll(window, x, y);
        ASSERT_EQ(user::ShownPart(window).x, x);
        window.canvas.Refresh();
        Graphics& live = window.canvas.Graphics();
        const std::string where = "at " + Str(top).Utf8() + ", size " + Str(size).Utf8() + ", scrolled by " +
                                  Str(x).Utf8() + "," + Str(y).Utf8();
        const auto fresh = PixelsOf(window.canvas);
        ASSERT_LT(Red(fresh.back()), 0x80) << "the light background is seen " << where;
        ASSERT_TRUE(user::UpToDateOnScreen(window)) << where;
        for (const auto& [left, up] :
             {std::pair{0, 0}, {size - 7, size - 3}, {20, 30}, {size - 12, 0}, {0, size - 6}}) {
          live.ForeColor = 0xFF;
          live.DrawOval(left, up, 11, 11);
          FlushCanvases();
          ASSERT_TRUE(user::UpToDateOnScreen(window)) << where;
          live.Clip(left, up, 11, 11);
          window.DrawMap(live);
          live.NoClip();
          FlushCanvases();
          ASSERT_TRUE(user::UpToDateOnScreen(window)) << where;
        }
        ASSERT_EQ(PixelsOf(window.canvas), fresh) << where;
      }
}

TEST_F(LinkedCursorTest, FollowsAMapThatTheWheelMovesUnderThePointer) {
  LoadThree(60, Screen(0).AvailableHeight());
  user::MouseMove(main().cvTIF, 5, 6);
  user::Wheel(main().cvTIF, 5, 6, -1);
  const int scrolled = user::ShownPart(main()).y;
  ASSERT_GT(scrolled, 0);
  EXPECT_EQ(Globals::fCursorYold, 6 + scrolled);
  EXPECT_EQ(main().SpeciesLB.Cell(1, Main::kCurColumn), Str(Level(1, 5, 6 + scrolled)));
}

TEST_F(LinkedCursorTest, HeldKeysChangeTheCircleButNotWithAShortcut) {
  LoadThree(256, 256);
  user::Click(main().BBcursorCircles);
  user::MouseMove(main().cvTIF, 100, 100);
  const struct {
    bool shift, control, option;
    const char* key;
    int size;
    Color color;
  } ticks[] = {
      {false, true, false, "", 42, 0x808080},
      {false, true, true, "", 44, 0x808080},  // Control takes precedence over Option
      {false, false, true, "", 41, 0x808080},
      {true, false, false, "", 41, kBlack},
      {true, false, false, "", 41, kBlack},  // once for each press
      {false, false, false, "", 41, kBlack},
      {true, false, false, "", 41, kWhite},
      {false, true, false, "", 43, kWhite},
      {false, true, false, "Ctrl+3", 41, kWhite},  // as before the press, and unchanged while the key is down
      {false, true, false, "", 41, kWhite},
      {false, false, false, "", 41, kWhite},
      {false, true, false, "", 43, kWhite},
      {false, true, false, "Ctrl+C", 41, kWhite},  // a shortcut that is disabled
      {false, false, false, "", 41, kWhite},
      {false, true, false, "Ctrl+Down", 43, kWhite},  // no shortcut
      {false, false, false, "", 43, kWhite},
  };
  int row = 0;
  for (const auto& tick : ticks) {
    SCOPED_TRACE(row++);
    user::HoldKeys(tick.shift, tick.control, tick.option);
    if (*tick.key) user::Key(main(), tick.key);
    WaitForTick();
    EXPECT_EQ(Globals::fCursorSize, tick.size);
    EXPECT_EQ(Globals::fCursorColor, tick.color);
    if (!*tick.key) {
      EXPECT_EQ(PixelOf(main().cvTIF, 100, 100 - tick.size), tick.color);
    }
  }
}
