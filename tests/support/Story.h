#pragma once
/// A story: the program is used through real events, and at each stop everything that a user sees is compared with the
/// expected text tests/stories/<test>.txt. A stop lists what has changed since the previous one; the first, since the
/// program started. VORNALITE_UPDATE_STORIES rewrites the expected texts: read every line of the change before
/// committing it.

#include "tests/support/VisibleState.h"
#include "tests/support/WindowsFixture.h"

class Story : public WindowsTest {
 protected:
  Story();
  ~Story() override;

  /// Compares what has changed since the previous stop with the expected text. Messages shown meanwhile count as
  /// changes.
  void Stop(const std::string& name);
  /// Adds a line to the next stop, such as a file that was saved.
  void Note(const std::string& line) { notes_ += line + "\n"; }
  /// Notes what the action writes to standard error.
  void NoteErrors(const std::function<void()>& action);
  /// Makes the first stop list the whole state.
  void FromNothing() { before_.clear(); }

 private:
  std::string WithoutFolder(std::string text) const;
  void AddFiles(std::vector<user::StateLine>& lines) const;

  std::string file_, kept_, seen_, notes_;
  user::VisibleState state_;
  std::map<std::string, std::string> before_;
  std::size_t messagesSeen_ = 0;
};
