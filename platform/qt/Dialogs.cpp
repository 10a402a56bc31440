#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <set>

#include "platform/widgets/Dialogs.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

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

/// Messages that came from within a paint, where no box can be shown, come after it. Each is told once in a run: what
/// fails in one paint fails in the next, and closing the box is followed by a paint.
void ShowMessageSoon(const String& text) {
  static std::set<String> told;
  if (!told.insert(text).second) return;
  RunSoon([text] { Dispatch([&] { ShowMessage(text); }); });
}

}  // namespace

DialogAnswers& Dialogs() {
  static DialogAnswers answers;
  return answers;
}

void MsgBox(const String& text) {
  if (Dialogs().msgBox) return Dialogs().msgBox(text);
  InsidePaint() ? ShowMessageSoon(text) : ShowMessage(text);
}

bool SelectColor(Color& color, const String& prompt) {
  if (Dialogs().selectColor) return Dialogs().selectColor(color, prompt);
  const NestedLoop loop;
  const QColor chosen = QColorDialog::getColor(ToQColor(color), Parent(), ToQString(prompt));
  if (!chosen.isValid()) return false;
  color = chosen.rgb() & 0xFFFFFFU;
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
