#pragma once

#include <QObject>

namespace platform {

/// Blocks the input that is delivered while a handler runs. Updates the menus before a shortcut is matched.
///
/// A press that came before the gate closed has its release held back until the handler has ended: the toolkit would
/// otherwise believe the button down. The release and the moves that belong to a swallowed press are swallowed too,
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
