#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/xdriver/Windows.h"
#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// The source side of a drag of files (XDND, version 5): a small invisible window in a corner of the screen. It owns
/// the selection with the file names and delivers them on request.
class DragSource {
 public:
  DragSource(XScreen& screen, const std::vector<std::string>& files);

  /// Drags the files to the position on the screen and drops them there. True if the target took them. Throws
  /// Impossible if the target is not on top there or another program has grabbed the pointer.
  bool DragTo(Window target, int x, int y);

  /// Whether the target would accept the files now. Sends it the messages of a drag that enters, moves over its centre
  /// and leaves, without moving the pointer. False also if it does not reply within the limit in seconds.
  bool Accepted(Window target, double limit);

 private:
  void MakeWindow(int targetX, int targetY);

  /// Presses the button on the source and grabs the pointer.
  void TakePointer();

  /// Enters the target and moves over it to the position; true if it would accept a drop there.
  bool Approach(Window target, int x, int y);

  void Enter(Window target);

  /// Sends the position of the drag to the target; true if it replies that it would accept a drop there.
  bool Over(Window target, int x, int y, double limit);

  void Send(Window target, const std::string& type, std::vector<unsigned long> data);
  bool IsMessage(const XEvent& event, const std::string& type);

  /// Serves requests for the file names until the wanted event arrives.
  bool WaitFor(const std::function<bool(XEvent&)>& wanted, double limit);
  void Serve(const XSelectionRequestEvent& request);

  XScreen& screen_;
  std::string uris_;
  Window window_ = 0;
  Area corner_;
  Time time_ = CurrentTime;
};

}  // namespace xdriver
