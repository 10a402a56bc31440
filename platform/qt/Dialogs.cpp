#include "platform/widgets/Dialogs.h"

#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <cctype>
#include <set>

#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/values/ErrorLine.h"

namespace platform {

namespace {

QWidget* Parent() {
  Application* application = Application::Current();
  Window* front = application ? application->FrontWindow() : nullptr;
  return front ? front->Native().frame.get() : nullptr;
}

void ShowMessage(const String& text) {
  const NestedLoop loop;
  QMessageBox box(QMessageBox::NoIcon, "Vornalite", ToQString(text), QMessageBox::Ok, Parent());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

/// Whether to show a report. During a paint each report is shown only once per run: what fails in one paint fails in
/// the next, and closing the box causes a paint.
bool ToBeReported(const String& report) {
  static std::set<String> made;
  return !InsidePaint() || made.insert(report).second;
}

/// During a paint no box can be shown: the message appears after it.
void Show(const String& text) {
  if (Dialogs().msgBox) return Dialogs().msgBox(text);
  if (!InsidePaint()) return ShowMessage(text);
  RunSoon([text] { Dispatch([&] { ShowMessage(text); }); });
}

}  // namespace

DialogAnswers& Dialogs() {
  static DialogAnswers answers;
  return answers;
}

void MsgBox(const String& text) {
  if (ToBeReported(text)) Show(text);
}

void ReportFailure(const String& text, const String& place) {
  std::string cause = CurrentFailure();
  const std::string line = (place + ": ").Utf8() + cause;
  if (ToBeReported(line)) WriteErrorLine(line);
  // Causes that differ only in numbers, as from the rows of a list, share one box.
  std::erase_if(cause, [](unsigned char c) { return std::isdigit(c) != 0; });
  if (ToBeReported(text + EndOfLine() + cause)) Show(text);
}

bool SelectColor(Color& color, const String& prompt) {
  if (Dialogs().selectColor) return Dialogs().selectColor(color, prompt);
  const NestedLoop loop;
  const QColor chosen = QColorDialog::getColor(ToQColor(color), Parent(), ToQString(prompt));
  if (!chosen.isValid()) return false;
  color = ColorOf(chosen.rgb());
  return true;
}

Ref<FolderItem> SelectFolderDialog::ShowModal() {
  if (Dialogs().selectFolder) return Dialogs().selectFolder(*this);
  const NestedLoop loop;
  QFileDialog dialog(Parent(), ToQString(Title));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  if (!ActionButtonCaption.Empty()) dialog.setLabelText(QFileDialog::Accept, ToQString(ActionButtonCaption));
  if (InitialDirectory) dialog.setDirectory(QFile::decodeName(InitialDirectory->Path().c_str()));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return nullptr;
  return MakeRef<FolderItem>(std::filesystem::path(QFile::encodeName(dialog.selectedFiles().first()).toStdString()));
}

}  // namespace platform
