#pragma once
/// What a user sees of the program, as text: every window with its controls, the cells of the lists, the canvases, the
/// menus. Each line describes one thing and begins with its path, so that two states can be compared line by line.
///
/// Pixels are those on the screen after all pending events. A control whose pixels on the screen differ from what it
/// would paint now is reported. Nothing depends on the fonts of the machine: a text is described by its colour and
/// alignment, other pixels by the columns and rows that each colour covers.

#include <map>
#include <string>
#include <vector>

#include "platform/pictures/Picture.h"
#include "platform/widgets/Control.h"
#include "platform/widgets/Window.h"

namespace platform::testing {

struct StateLine {
  std::string path;  ///< such as "Main/PB_RGB" or "menu/FileClose"
  std::string text;
  std::string change{};  ///< of a canvas: what differs from its picture at the previous call
};

/// Size and pixels of a picture, as in the line of a canvas.
std::string TextOf(const Ref<Picture>& picture);
/// Whether the control is shown in a window that is on the screen.
bool OnScreen(RectControl& control);
/// Whether the screen shows what the window would paint now.
bool UpToDateOnScreen(Window& window);

class VisibleState {
 public:
  /// The current state. A canvas is compared with its picture at the previous call.
  std::vector<StateLine> Take();

 private:
  std::map<std::string, Ref<Picture>> canvases_;
};

}  // namespace platform::testing
