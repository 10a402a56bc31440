#include "platform/widgets/Window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/qt/NativeCanvas.h"
#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/qt/ScrollingContent.h"
#include "platform/widgets/Listbox.h"

namespace platform {

namespace {

/// The open windows, and those that are closed and will be destroyed after the current event.
std::vector<std::unique_ptr<Window>> windows;
std::vector<std::unique_ptr<Window>> closedWindows;
unsigned long long timesInFront = 0;

/// The frame that was activated below windows that were shown without activating them. Some window managers (xfwm4,
/// fluxbox) activate the raised windows: if this happens sooner than a user could do it, the frame is activated again,
/// above the others.
QPointer<QWidget> activatedFrame;
QDeadlineTimer activationEnds;

class FrameWidget : public QWidget {
 public:
  FrameWidget(NativeWindow& native, Qt::WindowFlags flags) : QWidget(nullptr, flags), native_(native) {}

 protected:
  bool event(QEvent* event) override {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::WindowStateChange) native_.SyncAway();
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate) native_.SyncActive();
    return handled;
  }
  void resizeEvent(QResizeEvent*) override { native_.FollowFrame(); }
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    native_.AskToClose();
  }
  void keyPressEvent(QKeyEvent* event) override { event->setAccepted(native_.KeyDown(*event)); }
  void dragEnterEvent(QDragEnterEvent* event) override { Consider(*event); }
  void dragMoveEvent(QDragMoveEvent* event) override { Consider(*event); }
  void dropEvent(QDropEvent* event) override { native_.TakeDrop(Consider(*event)); }

 private:
  /// Accepts a drag that holds files which the window accepts, and returns these; refuses others. Checked for each
  /// event: the source may change what it offers.
  std::vector<Ref<FolderItem>> Consider(QDropEvent& event) {
    const QWidget* modal = QApplication::activeModalWidget();
    std::vector<Ref<FolderItem>> files;
    if ((!modal || modal == this) && !native_.closed) files = native_.AcceptedFiles(*event.mimeData());
    files.empty() ? event.ignore() : event.acceptProposedAction();
    return files;
  }

  NativeWindow& native_;
};

/// The font may change at any time: a platform theme sets its own after the start.
class BarWidget : public QMenuBar {
 public:
  BarWidget(QWidget* parent, NativeWindow& native) : QMenuBar(parent), native_(native) {}

 protected:
  void changeEvent(QEvent* event) override {
    QMenuBar::changeEvent(event);
    if (native_.bar == this && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange))
      native_.FitMenuBar();
  }

 private:
  NativeWindow& native_;
};

Qt::WindowFlags FlagsOf(const WindowSettings& settings) {
  constexpr Qt::WindowFlags basic =
      Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (settings.frame != Frame::Document) return Qt::Dialog | basic;
  const Qt::WindowFlags document = Qt::Window | basic | Qt::WindowMinimizeButtonHint;
  return settings.resizeable ? document | Qt::WindowMaximizeButtonHint : document;
}

}  // namespace

NativeWindow::NativeWindow(Window& owner, const WindowSettings& wanted)
    : window(owner), settings(wanted), frame(std::make_unique<FrameWidget>(*this, FlagsOf(wanted))) {
  scrolling = new ScrollingContent(frame.get());
  content = scrolling->widget();
  SetRole(*frame, wanted.frame == Frame::Document ? QAccessible::Window : QAccessible::Dialog);
  SetRole(*content, QAccessible::Pane);
  content->setAccessibleName("Contents");  // it has the keyboard focus when no control has it
  frame->setWindowTitle(ToQString(settings.title));
  frame->setFocusPolicy(Qt::NoFocus);
  SetMenuBar(wanted.menuBar);
  FitFrame();
}

NativeWindow::~NativeWindow() { Retire(); }

void NativeWindow::Retire() {
  closed = true;
  showSoon = false;
}

void NativeWindow::Raise(const std::function<void(Window&)>& event) {
  if (!closed && opened) Dispatch([&] { event(window); });
}

QPoint NativeWindow::Place() const { return frame->geometry().topLeft() + QPoint(0, barHeight); }

void NativeWindow::SetPlace(int left, int top) {
  settings.centered = false;
  frame->setGeometry(QRect(QPoint(left, top - barHeight), frame->size()));
  // Set it even if a hidden window has this position already, so that the window manager does not choose another one.
  if (QWindow* handle = frame->windowHandle(); handle && !frame->isVisible()) handle->setGeometry(frame->geometry());
}

void NativeWindow::SetMenuBar(platform::MenuBar* newBar) {
  menuBar = newBar;
  delete bar;
  bar = nullptr;
  const auto actions = frame->actions();
  for (QAction* action : actions) frame->removeAction(action);
  AttachMenus();
  FitMenuBar();
}

void NativeWindow::FitMenuBar() {
  const int newHeight = bar ? bar->sizeHint().height() : 0;
  if (newHeight == barHeight) return;
  const QPoint place = Place();
  const bool placed = frame->testAttribute(Qt::WA_Moved);
  barHeight = newHeight;
  FitFrame();
  if (placed) SetPlace(place.x(), place.y());
}

void NativeWindow::AttachMenus() {
  if (menuBar) {
    bar = new BarWidget(frame.get(), *this);
    bar->setAccessibleName("Menus");
    bar->setNativeMenuBar(false);
    for (const auto& menu : menuBar->NativeBar().menus)
      if (menu) bar->addAction(menu->menuAction());
    bar->show();
    return;
  }
  // The shortcuts work without a bar too, but not while a modal window is shown.
  Application* application = Application::Current();
  if (!application || !application->MenuBar() || settings.frame == Frame::MovableModal) return;
  for (const auto& item : application->MenuBar()->Items()) {
    QAction* action = item->NativeItem().action;
    if (action && !action->shortcut().isEmpty()) frame->addAction(action);
  }
}

bool NativeWindow::Visible() const { return showSoon || (frame->isVisible() && !away); }

void NativeWindow::Show() {
  if (closed) return;
  showSoon = away = false;
  if (!frame->isVisible()) {
    if (settings.centered) {
      const QScreen* screen = QGuiApplication::primaryScreen();
      const QRect area = screen ? screen->availableGeometry() : QRect();
      SetPlace(area.center().x() - settings.width / 2, area.center().y() - settings.height / 2);
    }
    if (!frame->isMaximized()) FitFrame();
    if (!frame->focusWidget()) {
      const auto isList = [](const NativeControl* c) { return dynamic_cast<const NativeListbox*>(c) != nullptr; };
      const auto list = std::find_if(controls.begin(), controls.end(), isList);
      // A list with this handler passes the focus on: screen readers should not announce it.
      const bool keeps = list != controls.end() && !static_cast<NativeListbox*>(*list)->list.GotFocus;
      keeps ? (*list)->widget->setFocus() : content->setFocus();
    }
    awaitsExposure = true;
  }
  if (frame->isMinimized()) frame->setWindowState(frame->windowState() & ~Qt::WindowMinimized);
  frame->show();
  frame->raise();
  if (!frame->testAttribute(Qt::WA_ShowWithoutActivating)) frame->activateWindow();
  BringToFront(*this);
}

void NativeWindow::ShowSoon() {
  if (HandlerRuns())
    showSoon = true;
  else
    Show();
}

void NativeWindow::Hide() {
  showSoon = false;
  if (modalLoop) modalLoop->quit();
  // The menus are needed only while the application is running.
  if (closed || !menuBar || !frame->isVisible() || !ApplicationRuns()) return Leave();
  away = true;
  if (!HandlerRuns()) SettleAwayWindows();
}

void NativeWindow::Leave() {
  away = false;
  if (!frame->isVisible()) return;
  QWindow* handle = frame->windowHandle();
  const bool placed = handle && (handle->isExposed() || frame->isMinimized());
  const QPoint place = Place();
  frame->hide();
  // When shown again, it gets a new native window: window managers move a window that was unmapped, some only after it
  // is mapped again, and one that was minimised would come back minimised.
  if (handle) handle->destroy();
  if (placed) SetPlace(place.x(), place.y());
}

void NativeWindow::SyncAway() {
  if (!away || frame->isMinimized()) return;
  away = false;
  SyncActive();
}

void NativeWindow::ShowModal() {
  if (modalLoop || closed) return;
  QEventLoop loop;
  modalLoop = &loop;
  Leave();
  frame->setWindowModality(Qt::ApplicationModal);
  frame->winId();  // creates the native window, whose transient parent is set next
  QWidget* below = QApplication::activeWindow();
  if (below && below != frame.get()) frame->windowHandle()->setTransientParent(below->windowHandle());
  Show();
  {
    const NestedLoop nested;
    loop.exec();
  }
  modalLoop = nullptr;
  Leave();
  frame->setWindowModality(Qt::NonModal);
}

void NativeWindow::SyncActive() {
  if (HandlerRuns())
    return RunSoon([guard = QPointer<QWidget>(frame.get()), this] {
      if (guard) SyncActive();
    });
  const bool isActive = frame->isActiveWindow() && frame->isVisible() && !away;
  if (isActive == active) return;
  active = isActive;
  if (active) {
    BringToFront(*this);
    if (activatedFrame && frame->testAttribute(Qt::WA_ShowWithoutActivating) && !activationEnds.hasExpired())
      activatedFrame->activateWindow();
  }
  Raise([isActive](Window& target) { isActive ? target.Event_Activate() : target.Event_Deactivate(); });
}

void NativeWindow::AskToClose() {
  Raise([this](Window& asked) {
    if (asked.Event_CancelClose(false)) return;
    modalLoop ? Hide() : asked.Close();
  });
}

Window::Window(const WindowSettings& settings) : native_(std::make_unique<NativeWindow>(*this, settings)) {}
Window::~Window() = default;

void Window::ActivateSoon() { native_->activateSoon = true; }
void Window::Show() { native_->frame->isVisible() ? native_->Show() : native_->ShowSoon(); }
void Window::Hide() { native_->Hide(); }
void Window::ShowModal() { native_->ShowModal(); }
void Window::SetFocus() { native_->content->setFocus(); }
bool Window::Visible() const { return native_->Visible(); }
void Window::Visible(bool visible) { visible ? Show() : Hide(); }
bool Window::Closed() const { return native_->closed; }

void Window::Close() {
  const auto found = std::find_if(windows.begin(), windows.end(), [this](const auto& w) { return w.get() == this; });
  if (found == windows.end()) return;
  closedWindows.push_back(std::move(*found));
  windows.erase(found);
  native_->Retire();
  native_->Hide();
  RunSoon(EndClosedWindows);
}

int Window::Left() const { return native_->Place().x(); }
void Window::Left(int left) { native_->SetPlace(left, Top()); }
int Window::Top() const { return native_->Place().y(); }
void Window::Top(int top) { native_->SetPlace(Left(), top); }
int Window::Width() const { return native_->settings.width; }
void Window::Width(int width) { native_->SetSize(width, Height()); }
int Window::Height() const { return native_->settings.height; }
void Window::Height(int height) { native_->SetSize(Width(), height); }
int Window::MinWidth() const { return native_->settings.minWidth; }
int Window::MinHeight() const { return native_->settings.minHeight; }
int Window::MaxWidth() const { return native_->settings.maxWidth; }

void Window::MinWidth(int width) {
  native_->settings.minWidth = width;
  native_->SetLimits();
  if (Width() < width) Width(width);
}

void Window::MinHeight(int height) {
  native_->settings.minHeight = height;
  native_->SetLimits();
  if (Height() < height) Height(height);
}

void Window::MaxWidth(int width) {
  native_->settings.maxWidth = width;
  native_->SetLimits();
  if (Width() > width) Width(width);
}

String Window::Title() const { return native_->settings.title; }

void Window::Title(const String& title) {
  native_->settings.title = title;
  native_->frame->setWindowTitle(ToQString(title));
}

platform::MenuBar* Window::MenuBar() const { return native_->menuBar; }
void Window::MenuBar(platform::MenuBar* bar) { native_->SetMenuBar(bar); }
void Window::AcceptFileDrop(const String& typeName) { native_->AcceptDrops(typeName); }

void Window::Reveal(const RectControl& control) { native_->scrolling->Reveal(*control.NeedNative().widget); }
void Window::EndReveal() { native_->scrolling->EndReveal(); }

void Window::Refresh() {
  for (NativeControl* control : native_->controls)
    if (auto* canvas = dynamic_cast<NativeCanvas*>(control)) {
      canvas->dirty = true;
      if (!InsidePaint() && canvas->widget->isVisible() && !native_->awaitsExposure) {
        canvas->FitBacking();
        canvas->Compose();
      }
    }
  native_->frame->update();
  // A paint of the frame skips opaque widgets in it, such as canvases, unless they have a paint pending.
  if (!InsidePaint())
    for (QWidget* widget : native_->frame->findChildren<QWidget*>()) widget->update();
  PutOnScreen(*native_, *native_->frame);
}

Control* Window::FindControl(const String& name, int index) const {
  for (Control* control : controls_)
    if (control->Name() == name && control->Index() == index) return control;
  return nullptr;
}

void Window::CreateControl(Control& control, const char* name) {
  control.name_ = name;
  control.window_ = this;
  controls_.push_back(&control);
}

void Window::CreateControl(const ControlRow& row) {
  RectControl& control = *row.control;
  CreateControl(control, row.name);
  control.index_ = row.index;
  control.native_ = control.MakeNative(*native_, row.text);
  NativeControl& made = *control.native_;
  made.locks = row.locks;
  made.page = row.page;
  const QString name = ToQString(control.name_);
  made.widget->setObjectName(row.index == 0 ? name : name + QString::number(row.index));
  made.SetAbout(ToQString(row.about));
  made.SetFont(TextFont::System);
  made.SetPlace({row.left, row.top, row.width, row.height});
  made.SyncVisible();
}

void Window::CreateControls(std::initializer_list<ControlRow> rows) {
  for (const ControlRow& row : rows) CreateControl(row);
}

int WindowCount() { return static_cast<int>(windows.size()); }

Window& WindowAt(int index) {
  if (index < 0 || index >= WindowCount()) ThrowOutOfBounds("window list", index, WindowCount() - 1);
  return *windows[static_cast<std::size_t>(index)];
}

void OpenWindow(std::unique_ptr<Window> window) {
  Window& opened = *window;
  windows.push_back(std::move(window));
  opened.native_->opened = true;
  Dispatch([&] {
    for (std::size_t i = 0; i < opened.controls_.size(); ++i)
      if (opened.controls_[i]->Open) opened.controls_[i]->Open();
    opened.Event_Open();
  });
  if (opened.native_->settings.visible) opened.native_->ShowSoon();
}

void BringToFront(NativeWindow& window) { window.lastInFront = ++timesInFront; }

void ShowWaitingWindows() {
  const auto waiting = std::ranges::find_if(windows, [](const auto& window) { return window->Native().activateSoon; });
  NativeWindow* activated = waiting == windows.end() ? nullptr : &(*waiting)->Native();
  std::vector<NativeWindow*> shown;
  for (std::size_t i = 0; i < windows.size(); ++i) {
    NativeWindow& native = windows[i]->Native();
    if (!native.showSoon) continue;
    native.frame->setAttribute(Qt::WA_ShowWithoutActivating, activated);
    native.Show();
    shown.push_back(&native);
  }
  if (!activated) return;
  activated->activateSoon = false;
  if (!activated->Visible()) return;
  for (NativeWindow* window : shown) AwaitExposure(*window);
  activated->frame->activateWindow();
  for (NativeWindow* window : shown) window->frame->raise();
  BringToFront(*activated);
  activatedFrame = activated->frame.get();
  activationEnds.setRemainingTime(500);
}

void SettleAwayWindows() {
  bool wayBack = std::any_of(windows.begin(), windows.end(),
                             [](const auto& window) { return window->MenuBar() && window->Visible(); });
  for (const auto& window : windows) {
    NativeWindow& native = window->Native();
    if (!native.away) continue;
    if (wayBack) {
      native.Leave();
    } else {
      // While it is visible: some window managers ignore the request of a hidden window.
      if (!native.frame->isMinimized()) native.frame->setWindowState(native.frame->windowState() | Qt::WindowMinimized);
      wayBack = true;
    }
  }
}

bool WindowsWaitForTheirEnd() { return !closedWindows.empty(); }

void EndClosedWindows() {
  if (HandlerBegun()) return;  // called again when the last handler ends
  const auto ending = std::move(closedWindows);
  closedWindows.clear();
}

void EndAllWindows() {
  for (const auto& window : windows) window->Native().Retire();
  windows.clear();
  closedWindows.clear();
}

}  // namespace platform
