#pragma once
/// Messages and dialogs. Tests can replace them by functions (DialogAnswers); the real ones are the toolkit's native
/// dialogs. Each call returns when the user has answered.

#include <functional>

#include "platform/pictures/FolderItem.h"
#include "platform/values/Color.h"
#include "platform/values/String.h"

namespace platform {

/// Shows text and waits for the user. During a paint it returns at once; the text is shown after the paint, and the
/// same text only once per run.
void MsgBox(const String& text);
/// For a catch block that handles all failures: shows a MsgBox with a text that does not name the cause, and writes one
/// line with the place in the program and the cause to standard error. During a paint each cause is reported once per
/// run.
void ReportFailure(const String& text, const String& place);

/// Runs the colour chooser, starting at `color`. Returns true if confirmed; `color` is then the choice.
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

/// Replacements of the dialogs. An empty function means the native dialog.
struct DialogAnswers {
  std::function<void(const String& text)> msgBox;
  std::function<bool(Color& color, const String& prompt)> selectColor;
  std::function<Ref<FolderItem>(const FolderItemDialog& dialog)> selectFolder;
};
/// The replacements in use; they can be assigned.
DialogAnswers& Dialogs();

}  // namespace platform
