#pragma once
/// Messages and dialogs. All of them go through one seam, so that a test or a script can answer in the user's place;
/// the real ones are the toolkit's native dialogs. Each call returns when the user has answered.

#include <functional>

#include "platform/pictures/FolderItem.h"
#include "platform/values/Color.h"
#include "platform/values/String.h"

namespace platform {

/// Shows text and waits for the user. From within a paint it returns at once; the text is shown after the paint, and
/// the same text only once in a run.
void MsgBox(const String& text);
/// The end of a handler for all failures, within its catch block: a MsgBox of a text that does not tell the cause, and
/// one line on standard error with the place and the cause. From within a paint each cause is reported once in a run.
void ReportFailure(const String& text, const String& place);

/// Runs the system's colour chooser, starting at `color`. True if confirmed; `color` is the choice then.
bool SelectColor(Color& color, const String& prompt);

class FolderItemDialog {
 public:
  Ref<FolderItem> InitialDirectory;
  String Title;
  String ActionButtonCaption;
  virtual ~FolderItemDialog() = default;
  /// The chosen item, or nil.
  virtual Ref<FolderItem> ShowModal() = 0;
};

/// Lets the user choose an existing folder.
class SelectFolderDialog : public FolderItemDialog {
 public:
  Ref<FolderItem> ShowModal() override;
};

/// Who answers. An empty function means the native dialog.
struct DialogAnswers {
  std::function<void(const String& text)> msgBox;
  std::function<bool(Color& color, const String& prompt)> selectColor;
  std::function<Ref<FolderItem>(const FolderItemDialog& dialog)> selectFolder;
};
/// The answers in force, for writing.
DialogAnswers& Dialogs();

}  // namespace platform
