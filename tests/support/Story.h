#pragma once
/// A story: the program is used through real events, and at each stop everything that a person sees is compared with
/// the kept text tests/stories/<test>.txt. A stop holds what has changed since the stop before; the first one, what has
/// changed since the program started. With VORNALITE_UPDATE_STORIES set the kept texts are rewritten: read every
/// line of the change before it is committed.

#include "tests/support/VisibleState.h"
#include "tests/support/WindowsFixture.h"

class Story : public WindowsTest {
 protected:
  Story();
  ~Story() override;

  /// Compares what has changed since the stop before with the kept text of that stop. Messages shown meanwhile count
  /// as changes.
  void Stop(const std::string& name);
  /// Adds a line to the next stop, such as a file that was saved.
  void Note(const std::string& line) { notes_ += line + "\n"; }
  /// Notes what the action writes to standard error.
  void NoteErrors(const std::function<void()>& action);
  /// Writes the whole state at the first stop.
  void FromNothing() { before_.clear(); }

 private:
  std::string WithoutFolder(std::string text) const;
  void AddFiles(std::vector<user::StateLine>& lines) const;

  std::string file_, kept_, seen_, notes_;
  user::VisibleState state_;
  std::map<std::string, std::string> before_;
  std::size_t messagesSeen_ = 0;
};
