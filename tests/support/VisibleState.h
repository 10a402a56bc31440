#pragma once
/// What a person sees of the program, as text: every window with its controls, the cells of the lists, the canvases,
/// the menus. One line is about one thing and begins with its path, so that two states can be compared line by line.
///
/// Pixels are those on the screen, taken after all waiting events. A control whose pixels on the screen are not what
/// it would paint now has a line of its own. Nothing in the text depends on the fonts of the machine: a text is
/// written with its colour and alignment, and the pixels beside it as the columns and rows that each colour covers.

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
  std::string change{};  ///< of a canvas: what differs from its picture at the call before
};

/// Size and pixels of a picture, as in the line of a canvas.
std::string TextOf(const Ref<Picture>& picture);
/// Whether the control is shown in a window that is on the screen.
bool OnScreen(RectControl& control);
/// Whether the screen shows what the window would paint now.
bool UpToDateOnScreen(Window& window);

class VisibleState {
 public:
  /// The state now. A canvas is compared with its picture at the call before.
  std::vector<StateLine> Take();

 private:
  std::map<std::string, Ref<Picture>> canvases_;
};

}  // namespace platform::testing
