#include "platform/widgets/Application.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QIcon>
#include <QMouseEvent>
#include <QPointer>
#include <QSessionManager>
#include <QSettings>
#include <QThread>
#include <QWindow>
#include <clocale>
#include <deque>
#include <future>

#include "platform/qt/NativeLook.h"
#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/values/ErrorLine.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Dialogs.h"

static void LoadResources() { Q_INIT_RESOURCE(vornalite); }

namespace platform {

namespace {

/// A handler that runs this long lets the toolkit serve the screen when it refreshes something.
constexpr int kPumpMilliseconds = 30;
constexpr int kExposureMilliseconds = 1000;

/// The state of the one thread of events.
struct Running {
  int depth = 0;     ///< handlers within one another since the last nested loop
  int waiting = 0;   ///< handlers below that wait for a nested loop
  int painting = 0;  ///< paints of the toolkit within one another
  bool posted = false;
  bool reporting = false;
  bool updatingMenus = false;
  bool opened = false;  ///< the application's open event has come
  bool quitting = false;
  int status = 0;
  QElapsedTimer sincePump;
  std::deque<std::function<void()>> soon;
  Application* application = nullptr;
};
Running running;

void RunWaiting();

void WakeUp() {
  if (running.soon.empty() || running.posted || !qApp) return;
  running.posted = true;
  QMetaObject::invokeMethod(
      qApp, [] { RunWaiting(); }, Qt::QueuedConnection);
}

void RunWaiting() {
  running.posted = false;
  while (!running.soon.empty() && !HandlerRuns()) {
    const auto work = std::move(running.soon.front());
    running.soon.pop_front();
    WakeUp();  // should the work open a nested loop, the rest goes on there
    Guarded(work);
  }
}

/// Keeps input away from the program while a handler runs, and the menus up to date before a key is tried.
///
/// A press that came before the gate closed has its release held back until the handler has ended: the toolkit would
/// otherwise believe the button down. The release and the moves that belong to a swallowed press are swallowed too,
/// whenever they come.
class InputGate : public QObject {
 public:
  bool Closed() const { return closed_; }
  void Close(bool closed) { closed_ = closed; }

  bool eventFilter(QObject* receiver, QEvent* event) override {
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick: {
        const auto button = static_cast<QMouseEvent*>(event)->button();
        if (closed_) {
          swallowed_ |= button;
          return true;
        }
        swallowed_ &= ~Qt::MouseButtons(button);
        NoteFront(receiver);
        return false;
      }
      case QEvent::MouseButtonRelease: {
        const auto* release = static_cast<QMouseEvent*>(event);
        if (swallowed_ & release->button()) {
          swallowed_ &= ~Qt::MouseButtons(release->button());
          return true;
        }
        if (closed_) HoldBack(receiver, *release);
        return closed_;
      }
      case QEvent::MouseMove:
        return closed_ || (static_cast<QMouseEvent*>(event)->buttons() & swallowed_);
      case QEvent::ShortcutOverride:
        if (closed_) {
          event->accept();  // so that no shortcut is tried
          return true;
        }
        NoteFront(receiver);
        if (running.application && !HandlerRuns()) running.application->UpdateMenus();
        return false;
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::InputMethod:
      case QEvent::ContextMenu:
      case QEvent::NonClientAreaMouseButtonPress:
      case QEvent::NonClientAreaMouseButtonRelease:
      case QEvent::NonClientAreaMouseButtonDblClick:
      case QEvent::TabletPress:
      case QEvent::TabletMove:
      case QEvent::TabletRelease:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::TouchCancel:
      case QEvent::NativeGesture:
        return closed_;
      case QEvent::Close:
      case QEvent::DragEnter:
      case QEvent::DragMove:
      case QEvent::Drop:
        if (closed_) event->ignore();
        return closed_;
      case QEvent::Quit:
        if (receiver != qApp || !running.application) return false;
        RunSoon([] {
          if (running.application && !running.quitting) Dispatch([] { running.application->Quit(); });
        });
        return true;
      default:
        return false;
    }
  }

 private:
  static void NoteFront(QObject* receiver) {
    if (auto* window = qobject_cast<QWindow*>(receiver))
      for (int i = 0; i < WindowCount(); ++i)
        if (WindowAt(i).Native().frame->windowHandle() == window) BringToFront(WindowAt(i).Native());
  }
  static void HoldBack(QObject* receiver, const QMouseEvent& release) {
    RunSoon([target = QPointer<QObject>(receiver), event = std::shared_ptr<QMouseEvent>(release.clone())] {
      if (target) QCoreApplication::sendEvent(target, event.get());
    });
  }

  bool closed_ = false;
  Qt::MouseButtons swallowed_;
};

/// The toolkit and what must end before it.
struct Toolkit {
  Toolkit(int& argc, char** argv) : application(argc, argv) { application.installEventFilter(&gate); }
  ~Toolkit() {
    application.removeEventFilter(&gate);
    EndAllWindows();
    EndAllMenus();
  }
  QApplication application;
  InputGate gate;
};
Toolkit* toolkit = nullptr;

void PreferX11() {
#ifdef Q_OS_LINUX
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
      qEnvironmentVariableIsSet("DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "xcb");
#endif
}

void Report(const String& failure) {
  if (running.reporting) {
    // The message itself is on the screen, and another failure came of it.
    WriteErrorLine(failure.Utf8());
    return;
  }
  running.reporting = true;
  try {
    MsgBox(String("An unexpected error ended the last action.") + EndOfLine() + failure);
  } catch (...) {
    WriteErrorLine(failure.Utf8());
  }
  running.reporting = false;
}

}  // namespace

int heldKeys = -1;

void StartToolkit(char** argv) {
  LoadResources();
  PreferX11();
  // The toolkit's dialogs would keep places and colours in a file of theirs; a run leaves nothing behind but pictures.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QCoreApplication::setApplicationName("Vornalite");
  QGuiApplication::setApplicationDisplayName({});
  static int words = 1;  // the program has no command line, so the toolkit has none either
  toolkit = new Toolkit(words, argv);
  std::setlocale(LC_NUMERIC, "C");  // the toolkit has taken over the user's, whose decimal point may be a comma
  QGuiApplication::setWindowIcon(QIcon(":/vornalite/vornalite.png"));
  QGuiApplication::setDesktopFileName("vornalite");
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QObject::connect(qApp, &QGuiApplication::commitDataRequest, qApp, [](QSessionManager& session) {
    for (int i = WindowCount() - 1; i >= 0; --i) {
      bool keeps = false;
      Dispatch([&] { keeps = i < WindowCount() && WindowAt(i).Event_CancelClose(true); });
      if (keeps) return session.cancel();
    }
  });
  ApplyLook();
  InstallTextDrawing();
  WatchShortcuts();
  InstallRoles();
}

bool HandlerRuns() { return running.depth > 0 || GateClosed(); }
bool HandlerBegun() { return running.depth + running.waiting > 0; }
bool GateClosed() { return toolkit && toolkit->gate.Closed(); }
bool ApplicationRuns() { return running.opened && !running.quitting; }
bool InsidePaint() { return running.painting > 0; }

void RunSoon(std::function<void()> work) {
  running.soon.push_back(std::move(work));
  if (!HandlerRuns()) WakeUp();
}

void Guarded(const std::function<void()>& event) {
  try {
    event();
  } catch (...) {
    Report(CurrentFailure());
  }
}

void Dispatch(const std::function<void()>& event) {
  const bool outermost = running.depth == 0;
  if (outermost) running.sincePump.start();
  ++running.depth;
  Guarded(event);
  if (outermost && !InsidePaint()) {
    Guarded([] {
      ShowWaitingWindows();
      SettleAwayWindows();
      FlushCanvases();
    });
    if (running.application) running.application->UpdateMenus();
  }
  --running.depth;
  if (!outermost) return;
  if (InsidePaint()) RunSoon(FlushCanvases);
  if (!HandlerBegun() && WindowsWaitForTheirEnd()) RunSoon(EndClosedWindows);
  WakeUp();
}

void PumpUnderGate() {
  if (!toolkit || toolkit->gate.Closed() || InsidePaint()) return;
  toolkit->gate.Close(true);
  QCoreApplication::processEvents();
  toolkit->gate.Close(false);
  running.sincePump.start();
  WakeUp();
}

void PumpIfDue() {
  if (running.depth > 0 && running.sincePump.elapsed() >= kPumpMilliseconds) PumpUnderGate();
}

void AwaitWork(const std::function<void()>& work) {
  // Where no thread is to be had the work is done by get().
  std::future<void> done = std::async(work);
  while (done.wait_for(std::chrono::milliseconds(kPumpMilliseconds)) == std::future_status::timeout) PumpIfDue();
  done.get();
}

void AwaitExposure(NativeWindow& window) {
  if (!window.awaitsExposure) return;
  QElapsedTimer waited;
  waited.start();
  const auto exposed = [&] {
    const QWindow* handle = window.frame->windowHandle();
    return handle && handle->isExposed();
  };
  while (!exposed() && !GateClosed() && !InsidePaint() && waited.elapsed() < kExposureMilliseconds) {
    PumpUnderGate();
    if (!exposed()) QThread::usleep(500);
  }
  window.awaitsExposure = false;
}

void PutOnScreen(NativeWindow& window, QWidget& widget) {
  if (InsidePaint()) return widget.update();
  if (window.showSoon) window.Show();
  if (!widget.isVisible()) return;
  AwaitExposure(window);
  widget.repaint();
  PumpIfDue();
}

NestedLoop::NestedLoop() : depth_(running.depth), closed_(GateClosed()), painting_(running.painting) {
  ShowWaitingWindows();
  SettleAwayWindows();
  FlushCanvases();
  running.waiting += depth_;
  running.depth = 0;
  running.painting = 0;
  if (toolkit) toolkit->gate.Close(false);
  WakeUp();
}

NestedLoop::~NestedLoop() {
  running.depth = depth_;
  running.waiting -= depth_;
  running.painting = painting_;
  if (toolkit) toolkit->gate.Close(closed_);
  running.sincePump.start();
}

PaintScope::PaintScope() { ++running.painting; }
PaintScope::~PaintScope() { --running.painting; }

Application::Application() { running.application = this; }

Application::~Application() {
  if (running.application != this) return;
  running = {};
  // Here and not when static objects end: parts of the toolkit that it needs for that are gone by then.
  delete toolkit;
  toolkit = nullptr;
}

Application* Application::Current() { return running.application; }

void Application::Quit(int status) {
  for (int i = 0; i < WindowCount(); ++i)
    if (WindowAt(i).Event_CancelClose(true)) return;
  while (WindowCount() > 0) WindowAt(WindowCount() - 1).Close();
  running.quitting = true;
  running.status = status;
  QCoreApplication::exit(status);
}

void Application::Open() {
  Dispatch([this] {
    running.opened = true;
    Event_Open();
  });
}

int Application::Run() {
  Open();
  if (!running.quitting) QCoreApplication::exec();
  running.quitting = false;
  EndClosedWindows();
  return running.status;
}

void Application::MenuBar(platform::MenuBar* bar) { menuBar_ = bar; }

Window* Application::FrontWindow() const {
  Window* front = nullptr;
  for (int i = 0; i < WindowCount(); ++i) {
    Window& window = WindowAt(i);
    if (window.Visible() && window.Native().lastInFront > (front ? front->Native().lastInFront : 0)) front = &window;
  }
  return front;
}

void Application::UpdateMenus() {
  if (!menuBar_ || !running.opened || running.updatingMenus || running.quitting) return;
  running.updatingMenus = true;
  ++running.depth;  // what the handlers set off waits for their end
  for (const auto& item : menuBar_->Items()) item->Enabled(item->AutoEnable());
  Guarded([this] { Event_EnableMenuItems(); });
  if (Window* front = FrontWindow()) Guarded([front] { front->Event_EnableMenuItems(); });
  --running.depth;
  running.updatingMenus = false;
  for (const auto& item : menuBar_->Items()) ShowState(*item);
  WakeUp();
}

bool Application::ChooseMenuItem(const String& name) {
  bool handled = false;
  const auto run = [&](const MenuHandlers& handlers) {
    const auto found = handlers.find(name);
    if (found == handlers.end()) return false;
    handled = true;
    return found->second();
  };
  Window* front = FrontWindow();
  if (!front || !run(front->Handlers())) run(handlers_);
  return handled;
}

}  // namespace platform
