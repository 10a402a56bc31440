#pragma once
/// Simulates a user and inspects the screen: sends real toolkit events to the widgets of the controls. Positions are
/// relative to the control, in logical pixels. Every action returns when its events have been handled.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Inputs.h"
#include "platform/widgets/Listbox.h"
#include "platform/widgets/Window.h"

namespace platform::testing {

/// Processes all pending events.
void ProcessEvents();
/// Runs the event loop until the condition holds; false if it did not within the limit.
bool WaitUntil(const std::function<bool()>& condition, int limitMilliseconds = 5000);

void Activate(Window& window);
/// Whether the window has come up, at any place of the screen.
bool IsOnScreen(Window& window);
void MouseMove(RectControl& control, int x, int y);  ///< no button; enters the control if it was outside
void MouseLeave(RectControl& control);
void MousePress(RectControl& control, int x, int y);
void MouseDragTo(RectControl& control, int x, int y);  ///< the button is down
void MouseRelease(RectControl& control, int x, int y);
void Click(RectControl& control);  ///< at its centre, or on the box of a check box
void Click(RectControl& control, int x, int y);
/// The centre of the control, in device pixels of the screen.
std::pair<int, int> CentreOnScreen(RectControl& control);
void RightClick(RectControl& control, int x, int y);
/// Posts work to the event queue; it is run even while a modal window blocks its caller.
void Later(std::function<void()> work);
/// Turns the wheel by a number of notches; a positive one scrolls up.
void Wheel(RectControl& control, int x, int y, int notches);
/// Resizes the frame as the user does; the size is that of the part below the menu bar.
void ResizeFrame(Window& window, int width, int height);
/// Scrolls the content of a window that shows only a part of it.
void Scroll(Window& window, int x, int y);
void ClickCell(Listbox& list, int row, int column, int x, int y);
void ClickCellCheck(Listbox& list, int row, int column);
void ClickHeader(Listbox& list, int column);
void EditCell(Listbox& list, int row, int column, const String& text);
void ChooseRow(PopupMenu& menu, int row);
/// Toggles the box as assistive technology does, without a click.
void Toggle(CheckBox& box);
/// Sends a key such as "Up", "Return", "Escape", "Tab", "Ctrl+Z" or a character to the widget with the keyboard focus.
void Key(Window& window, const std::string& key);
void Drop(Window& window, const std::vector<std::string>& paths);
/// Whether the window would accept a drag of these files.
bool WouldAccept(Window& window, const std::vector<std::string>& paths);
/// Presses the close button of the frame.
void CloseButton(Window& window);
/// Announces the end of the desktop session, which the program may refuse.
void EndSession();
/// Chooses a menu item as the mouse would: does nothing if it is disabled.
void ChooseMenu(const String& itemName);
/// Held modifier keys for Keyboard and for the following mouse events.
void HoldKeys(bool shift, bool control, bool option);

/// The part of the content that the window shows.
Rect ShownPart(Window& window);
/// Gives menu bars another font, as a platform theme does.
void ChangeMenuFont(int pixels);
/// The text on the clipboard.
String Clipboard();
}  // namespace platform::testing
