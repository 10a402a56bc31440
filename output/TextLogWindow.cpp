#include "output/TextLogWindow.h"

#include "platform/widgets/Application.h"
#include "platform/widgets/Screen.h"

using namespace platform;

TextLogWindow::TextLogWindow()
    : SingletonWindow({.title = "Debugging Log",
                       .width = 300,
                       .height = 200,
                       .minWidth = 300,
                       .minHeight = 200,
                       .maxWidth = 2000,
                       .maxHeight = 2000}) {
  CreateControls();
  AddMenuHandlers();
}

void TextLogWindow::CreateControls() {
  Window::CreateControls({
      // control, name, left, top, width, height, locks, page, text, about
      // The list stretches with the window, which is resized for nothing else.
      {&ListBox1, "ListBox1", 20, 46, 265, 134, kLockAll, kNoPage, "", "Log"},
      {&ClearButton, "ClearButton", 20, 14, 199, 20, kLockLeftTop, kNoPage, "Clear History"},
  });
  ListBox1.Setup({.columnWidths = "*"});
  ClearButton.Action = Handler(this, &TextLogWindow::ClearButton_Action);
}

void TextLogWindow::Event_Open() {
  const Screen screen(0);
  Top(screen.AvailableHeight() - Height() + screen.AvailableTop());
  Left(screen.AvailableWidth() - Width() + screen.AvailableLeft());
  LineNumber = 0;
}

void TextLogWindow::Add(const String& text) {
  LineNumber += 1;
  ListBox1.AddRow(Str(LineNumber) + ": " + text);
  ListBox1.ScrollPosition(10000);
}

void TextLogWindow::ClearButton_Action() {
  ListBox1.DeleteAllRows();
  LineNumber = 0;
}
