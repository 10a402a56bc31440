#include "tests/support/Testing.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QSessionManager>
#include <QTest>
#include <QUrl>
#include <QWindow>
#include <algorithm>

#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/qt/ScrollingContent.h"
#include "platform/widgets/Application.h"

namespace platform::testing {

namespace {

QPointer<QWindow> pointerWindow;  ///< the window that the pointer is in

Qt::KeyboardModifiers Held() {
  return heldKeys > 0 ? Qt::KeyboardModifiers(static_cast<Qt::KeyboardModifier>(heldKeys)) : Qt::NoModifier;
}

QWidget& WidgetOf(RectControl& control) { return *control.NeedNative().widget; }
QWindow* HandleOf(const QWidget& widget) { return widget.window()->windowHandle(); }
QPoint InWindow(const QWidget& widget, QPoint at) { return widget.mapTo(widget.window(), at); }
QTableView& TableOf(Listbox& list) { return *static_cast<NativeListbox&>(list.NeedNative()).view; }

QModelIndex IndexOf(Listbox& list, int row, int column) {
  static_cast<NativeListbox&>(list.NeedNative()).model->CheckBounds(row, column);
  return TableOf(list).model()->index(row, column);
}

void MoveTo(const QWidget& widget, QPoint at) {
  QWindow* handle = HandleOf(widget);
  if (!handle) return;
  const QPoint inWindow = InWindow(widget, at);
  if (pointerWindow != handle) {
    if (pointerWindow) {
      QEvent leave(QEvent::Leave);
      QCoreApplication::sendEvent(pointerWindow, &leave);
    }
    pointerWindow = handle;
    QEnterEvent enter(inWindow, inWindow, handle->mapToGlobal(inWindow));
    QCoreApplication::sendEvent(handle, &enter);
  }
  QTest::mouseMove(handle, inWindow);
  ProcessEvents();
}

void PressAt(const QWidget& widget, QPoint at) {
  MoveTo(widget, at);
  if (QWindow* handle = HandleOf(widget)) QTest::mousePress(handle, Qt::LeftButton, Held(), InWindow(widget, at));
  ProcessEvents();
}

void ReleaseAt(const QWidget& widget, QPoint at) {
  if (QWindow* handle = HandleOf(widget)) QTest::mouseRelease(handle, Qt::LeftButton, Held(), InWindow(widget, at));
  ProcessEvents();
}

void ClickAt(QWidget& widget, QPoint at) {
  const QPointer<QWidget> guard(&widget);
  PressAt(widget, at);
  if (guard) ReleaseAt(widget, at);
}

std::unique_ptr<QMimeData> FilesAsMime(const std::vector<std::string>& paths) {
  QList<QUrl> urls;
  for (const std::string& path : paths)
    urls.push_back(QUrl::fromEncoded("file://" + QByteArray::fromStdString(path).toPercentEncoding("/")));
  auto data = std::make_unique<QMimeData>();
  data->setUrls(urls);
  return data;
}

/// Enters the window with a drag and moves over it; true if the window would accept the drop.
bool DragOver(Window& window, const QMimeData& data) {
  QWindow* handle = window.Native().frame->windowHandle();
  if (!handle) return false;
  const QPoint middle(handle->width() / 2, handle->height() / 2);
  QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Held());
  QCoreApplication::sendEvent(handle, &enter);
  QDragMoveEvent move(middle, Qt::CopyAction, &data, Qt::LeftButton, Held());
  QCoreApplication::sendEvent(handle, &move);
  return enter.isAccepted() && move.isAccepted();
}

}  // namespace

void ProcessEvents() { QCoreApplication::processEvents(); }

bool WaitUntil(const std::function<bool()>& condition, int limitMilliseconds) {
  return QTest::qWaitFor(condition, limitMilliseconds);
}

bool IsOnScreen(Window& window) { return window.Native().frame->isVisible(); }

void Activate(Window& window) {
  window.Native().frame->activateWindow();
  (void)QTest::qWaitForWindowActive(window.Native().frame.get(), 500);
  ProcessEvents();
}

void MouseMove(RectControl& control, int x, int y) { MoveTo(WidgetOf(control), {x, y}); }

void MouseLeave(RectControl& control) {
  if (QWindow* handle = HandleOf(WidgetOf(control))) {
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(handle, &leave);
  }
  pointerWindow = nullptr;
  ProcessEvents();
}

void MousePress(RectControl& control, int x, int y) { PressAt(WidgetOf(control), {x, y}); }
void MouseDragTo(RectControl& control, int x, int y) { MoveTo(WidgetOf(control), {x, y}); }
void MouseRelease(RectControl& control, int x, int y) { ReleaseAt(WidgetOf(control), {x, y}); }

void Click(RectControl& control) {
  QWidget& widget = WidgetOf(control);
  const bool isCheckBox = widget.inherits("QCheckBox");
  ClickAt(widget, {isCheckBox ? 7 : widget.width() / 2, widget.height() / 2});
}

void Click(RectControl& control, int x, int y) { ClickAt(WidgetOf(control), {x, y}); }

std::pair<int, int> CentreOnScreen(RectControl& control) {
  const QWidget& widget = WidgetOf(control);
  const QPoint at = widget.mapToGlobal(widget.rect().center()) * widget.devicePixelRatioF();
  return {at.x(), at.y()};
}

void RightClick(RectControl& control, int x, int y) {
  const QWidget& widget = WidgetOf(control);
  QTest::mouseClick(HandleOf(widget), Qt::RightButton, Held(), InWindow(widget, {x, y}));
  ProcessEvents();
}

void Later(std::function<void()> work) { QMetaObject::invokeMethod(qApp, std::move(work), Qt::QueuedConnection); }

void Wheel(RectControl& control, int x, int y, int notches) {
  const QWidget& widget = WidgetOf(control);
  QWindow* handle = HandleOf(widget);
  if (!handle) return;
  const QPoint at = InWindow(widget, {x, y});
  QWheelEvent wheel(at, handle->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, Held(), Qt::NoScrollPhase,
                    false);
  QSpontaneKeyEvent::setSpontaneous(&wheel);  // others are not passed on to the parent of a widget that ignores them
  qApp->notify(handle, &wheel);
  ProcessEvents();
}

void ResizeFrame(Window& window, int width, int height) {
  NativeWindow& native = window.Native();
  native.frame->resize(width, height + native.barHeight);
  ProcessEvents();
}

void Scroll(Window& window, int x, int y) {
  window.Native().scrolling->horizontalScrollBar()->setValue(x);
  window.Native().scrolling->verticalScrollBar()->setValue(y);
  ProcessEvents();
}

void ClickCell(Listbox& list, int row, int column, int x, int y) {
  QTableView& table = TableOf(list);
  table.scrollTo(IndexOf(list, row, column));
  ClickAt(*table.viewport(), table.visualRect(IndexOf(list, row, column)).topLeft() + QPoint(x, y));
}

void ClickCellCheck(Listbox& list, int row, int column) {
  QTableView& table = TableOf(list);
  table.scrollTo(IndexOf(list, row, column));
  const auto& native = static_cast<NativeListbox&>(list.NeedNative());
  ClickAt(*table.viewport(), native.IndicatorRect(IndexOf(list, row, column)).center());
}

void ClickHeader(Listbox& list, int column) {
  QHeaderView& header = *TableOf(list).horizontalHeader();
  ClickAt(*header.viewport(),
          {header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2});
}

void EditCell(Listbox& list, int row, int column, const String& text) {
  QTableView& table = TableOf(list);
  const QPoint middle = table.visualRect(IndexOf(list, row, column)).center();
  ClickAt(*table.viewport(), middle);
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, Held(), middle);
  ProcessEvents();
  auto* editor = table.viewport()->findChild<QLineEdit*>();
  if (!editor) return;
  editor->selectAll();
  QTest::keyClicks(editor, ToQString(text));
  QTest::keyClick(editor, Qt::Key_Return);
  ProcessEvents();
}

void ChooseRow(PopupMenu& menu, int row) {
  auto& box = static_cast<QComboBox&>(WidgetOf(menu));
  box.showPopup();
  box.view()->setCurrentIndex(box.model()->index(row, 0));
  QTest::keyClick(box.view(), Qt::Key_Return);
  ProcessEvents();
}

void Toggle(CheckBox& box) {
  QAccessible::queryAccessibleInterface(&WidgetOf(box))
      ->actionInterface()
      ->doAction(QAccessibleActionInterface::toggleAction());
}

void Key(Window& window, const std::string& key) {
  QWidget& frame = *window.Native().frame;
  if (!frame.isActiveWindow()) Activate(window);
  QWidget* target = frame.focusWidget() ? frame.focusWidget() : &frame;
  if (key.size() == 1) {
    QTest::keyClick(target, key[0], Held());
  } else {
    // A modifier that is held already is neither pressed nor released.
    const QKeyCombination keys = QKeySequence(QString::fromStdString(key))[0];
    for (const bool press : {true, false}) {
      if (Held() & keys.keyboardModifiers())
        QTest::simulateEvent(target, press, keys.key(), keys.keyboardModifiers() | Held(), {}, false);
      else
        QTest::sendKeyEvent(press ? QTest::Press : QTest::Release, target, keys.key(), {}, keys.keyboardModifiers());
    }
  }
  ProcessEvents();
}

bool WouldAccept(Window& window, const std::vector<std::string>& paths) {
  const auto data = FilesAsMime(paths);
  const bool accepts = DragOver(window, *data);
  QDragLeaveEvent leave;
  if (QWindow* handle = window.Native().frame->windowHandle()) QCoreApplication::sendEvent(handle, &leave);
  return accepts;
}

void Drop(Window& window, const std::vector<std::string>& paths) {
  const auto data = FilesAsMime(paths);
  if (!DragOver(window, *data)) return;
  QWindow* handle = window.Native().frame->windowHandle();
  QDropEvent drop(QPointF(handle->width() / 2.0, handle->height() / 2.0), Qt::CopyAction, data.get(), Qt::LeftButton,
                  Held());
  QCoreApplication::sendEvent(handle, &drop);
  ProcessEvents();
}

void CloseButton(Window& window) {
  if (QWindow* handle = window.Native().frame->windowHandle()) {
    QCloseEvent close;
    QCoreApplication::sendEvent(handle, &close);
  }
  ProcessEvents();
}

void EndSession() {
  // A QSessionManager cannot be created. The program uses it only to refuse, which no window does.
  alignas(QSessionManager) static char none[sizeof(QSessionManager)];
  emit qApp->commitDataRequest(reinterpret_cast<QSessionManager&>(none));
  ProcessEvents();
}

void ChooseMenu(const String& itemName) {
  Application* application = Application::Current();
  if (!application || !application->MenuBar()) return;
  application->UpdateMenus();
  if (QAction* action = application->MenuBar()->Item(itemName).NativeItem().action) action->trigger();
  ProcessEvents();
}

void HoldKeys(bool shift, bool control, bool option) {
  Qt::KeyboardModifiers held;
  held.setFlag(Qt::ShiftModifier, shift).setFlag(Qt::ControlModifier, control).setFlag(Qt::AltModifier, option);
  heldKeys = static_cast<int>(held.toInt());
}

Rect ShownPart(Window& window) {
  const NativeWindow& native = window.Native();
  const QWidget& viewport = *native.scrolling->viewport();
  return {-native.content->x(), -native.content->y(), viewport.width(), viewport.height()};
}

void ChangeMenuFont(int pixels) {
  QFont font = QApplication::font();
  font.setPixelSize(pixels);
  QApplication::setFont(font, "QMenuBar");
  ProcessEvents();
}

String Clipboard() { return FromQString(QGuiApplication::clipboard()->text()); }

}  // namespace platform::testing
