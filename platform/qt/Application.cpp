#include "platform/widgets/Application.h"

#include <QApplication>
#include <QIcon>
#include <QSessionManager>
#include <QSettings>
#include <clocale>

#include "platform/qt/Dispatcher.h"
#include "platform/qt/EventGate.h"
#include "platform/qt/NativeLook.h"
#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

static void LoadResources() { Q_INIT_RESOURCE(vornalite); }

namespace platform {

namespace {

/// Owns QApplication and ends windows and menus before it.
struct Toolkit {
  Toolkit(int& argc, char** argv) : application(argc, argv) {
    application.installEventFilter(&inputGate);
    gate = &inputGate;
  }
  ~Toolkit() {
    gate = nullptr;
    application.removeEventFilter(&inputGate);
    EndAllWindows();
    EndAllMenus();
  }
  QApplication application;
  InputGate inputGate;
};
Toolkit* toolkit = nullptr;

void PreferX11() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
      qEnvironmentVariableIsSet("DISPLAY"))
    qputenv("QT_QPA_PLATFORM", "xcb");
}

}  // namespace

void StartToolkit(char** argv) {
  LoadResources();
  PreferX11();
  // Qt's dialogs would save folders and colours in a settings file; the program saves nothing but pictures.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
  QCoreApplication::setApplicationName("Vornalite");
  QGuiApplication::setApplicationDisplayName({});
  static int argumentCount = 1;  // the program has no options: Qt gets only its name
  toolkit = new Toolkit(argumentCount, argv);
  std::setlocale(LC_NUMERIC, "C");  // Qt has set the user's locale, whose decimal separator may be a comma
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

Application::Application() { running.application = this; }

Application::~Application() {
  if (running.application != this) return;
  running = {};
  // Not as a static object: Qt needs other static objects for its shutdown.
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
  ++running.depth;  // events that the handlers cause are delayed until they have ended
  for (const auto& item : menuBar_->Items()) item->Enabled(item->AutoEnable());
  RunReported([this] { Event_EnableMenuItems(); });
  if (Window* front = FrontWindow()) RunReported([front] { front->Event_EnableMenuItems(); });
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
