#pragma once

#include <QObject>

namespace platform {

/// Blocks the input that is delivered while a handler runs. Updates the menus before a shortcut is matched.
///
/// If the press of a button came before the gate closed, its release is delayed until the handler has ended; otherwise
/// Qt would regard the button as still pressed. After a dropped press, the moves and the release are dropped too,
/// whenever they come.
class InputGate : public QObject {
 public:
  bool Closed() const { return closed_; }
  void Close(bool closed) { closed_ = closed; }

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  bool closed_ = false;
  Qt::MouseButtons swallowed_;
};

/// The application's gate, or nullptr without the toolkit.
extern InputGate* gate;

}  // namespace platform
