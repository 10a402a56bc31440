#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/xdriver/Windows.h"
#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// A small invisible window in a corner of the screen from which files are dragged (XDND, version 5). It owns the
/// selection that holds their names, follows the pointer with messages to the window below it, and serves the names
/// when they are asked for.
class DragSource {
 public:
  DragSource(XScreen& screen, const std::vector<std::string>& files);

  /// Drags to the position on the screen, which shows `target`, and drops there. True if the target took it;
  /// throws Impossible if the position does not show the target or something else holds the pointer.
  bool DragTo(Window target, int x, int y);

  /// Whether the target would accept the files now. Sends it the messages of a drag over its centre that leaves again;
  /// the pointer stays where it is. False also if the target does not reply within the limit in seconds.
  bool Accepted(Window target, double limit);

 private:
  void MakeWindow(int targetX, int targetY);

  /// Presses the button on the source and keeps the pointer, as any drag source does.
  void TakePointer();

  /// Enters the target and moves over it to the position; true if it would take the drop there.
  bool Approach(Window target, int x, int y);

  void Enter(Window target);

  /// Reports the position of the drag to the target; true if it replies that it would take the drop there.
  bool Over(Window target, int x, int y, double limit);

  void Tell(Window target, const std::string& type, std::vector<unsigned long> data);
  bool IsMessage(const XEvent& event, const std::string& type);

  /// Serves requests for the file names until the wanted event comes.
  bool WaitFor(const std::function<bool(XEvent&)>& wanted, double limit);
  void Serve(const XSelectionRequestEvent& request);

  XScreen& screen_;
  std::string uris_;
  Window window_ = 0;
  Place corner_;
  Time time_ = CurrentTime;
};

}  // namespace xdriver
