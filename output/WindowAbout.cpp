#include "output/WindowAbout.h"

#include "platform/widgets/Application.h"

using namespace platform;

WindowAbout::WindowAbout()
    : SingletonWindow({.title = "About...", .width = 307, .height = 176, .resizeable = false, .centered = true}) {
  CreateControls();
  AddMenuHandlers();
}

void WindowAbout::CreateControls() {
  const auto LT = kLockLeftTop;
  Window::CreateControls({
      // control, name, left, top, width, height, locks, page, text, about
      {&StaticText1, "StaticText1", 20, 14, 267, 20, LT, kNoPage, "Vornalite"},
      {&StaticText2, "StaticText2", 20, 46, 267, 20, LT, kNoPage, "Version: "},
      {&StaticText3, "StaticText3", 20, 78, 267, 20, LT, kNoPage, "", "Empty line"},
      {&StaticText4, "StaticText4", 20, 110, 267, 20, LT, kNoPage, "Made by the Vornalite contributors"},
      {&StaticText5, "StaticText5", 20, 142, 267, 20, LT, kNoPage, "Questions: see the README"},
  });
}

void WindowAbout::Event_Open() { StaticText2.Text("Version: 0.0.1"); }
