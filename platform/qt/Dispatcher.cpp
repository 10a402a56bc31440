#include "platform/qt/Dispatcher.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QWidget>
#include <QWindow>
#include <future>

#include "platform/qt/EventGate.h"
#include "platform/qt/NativeWindow.h"
#include "platform/values/ErrorLine.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Dialogs.h"

namespace platform {

Running running;

namespace {

/// After a handler has run this long, a refresh also processes paints and expose events.
constexpr int kPumpMilliseconds = 30;
/// Input that arrives during a handler is dropped if the handler runs this long and refreshes the screen.
constexpr int kLongMilliseconds = 500;
constexpr int kExposureMilliseconds = 1000;

void RunWaiting() {
  running.posted = false;
  while (!running.soon.empty() && !HandlerRuns()) {
    const auto work = std::move(running.soon.front());
    running.soon.pop_front();
    WakeUp();  // if the work opens a nested loop, the rest is run there
    RunReported(work);
  }
}

void Report(const String& failure) {
  if (running.reporting) {
    // The failure occurred while the message of another one is shown.
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

bool RunsLong() { return running.depth > 0 && running.sinceBegin.elapsed() >= kLongMilliseconds; }

void BeginTimes() {
  running.sinceBegin.start();
  running.sincePump.start();
  running.pumped = false;
}

}  // namespace

void WakeUp() {
  if (running.soon.empty() || running.posted || !qApp) return;
  running.posted = true;
  QMetaObject::invokeMethod(
      qApp, [] { RunWaiting(); }, Qt::QueuedConnection);
}

bool HandlerRuns() { return running.depth > 0 || GateClosed(); }
bool HandlerBegun() { return running.depth + running.waiting > 0; }
bool GateClosed() { return gate && gate->Closed(); }
bool ApplicationRuns() { return running.opened && !running.quitting; }
bool InsidePaint() { return running.painting > 0; }

void RunSoon(std::function<void()> work) {
  running.soon.push_back(std::move(work));
  if (!HandlerRuns()) WakeUp();
}

void RunReported(const std::function<void()>& event) {
  try {
    event();
  } catch (...) {
    Report(CurrentFailure());
  }
}

void Dispatch(const std::function<void()>& event) {
  const bool outermost = running.depth == 0;
  if (outermost) BeginTimes();
  ++running.depth;
  RunReported(event);
  if (outermost && !InsidePaint()) {
    RunReported([] {
      ShowWaitingWindows();
      SettleAwayWindows();
      FlushCanvases();
    });
    if (running.application) running.application->UpdateMenus();
    if (running.pumped && RunsLong()) PumpUnderGate();  // drops the input that has come since the last one
  }
  --running.depth;
  if (!outermost) return;
  if (InsidePaint()) RunSoon(FlushCanvases);
  if (!HandlerBegun() && WindowsWaitForTheirEnd()) RunSoon(EndClosedWindows);
  WakeUp();
}

void PumpUnderGate() {
  if (!gate || gate->Closed() || InsidePaint()) return;
  gate->Close(true);
  // Input stays in the queue of the window system until the handler has ended, unless that takes long.
  QCoreApplication::processEvents(RunsLong() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
  QCoreApplication::eventDispatcher()->wakeUp();  // otherwise the event loop may not notice the input left in the queue
  gate->Close(false);
  running.pumped = true;
  running.sincePump.start();
  WakeUp();
}

void PumpIfDue() {
  if (running.depth == 0 || running.sincePump.elapsed() < kPumpMilliseconds) return;
  ShowWaitingWindows();
  PumpUnderGate();
}

void AwaitWork(const std::function<void()>& work) {
  // If the system refuses a thread, std::async defers: get() then does the work.
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

void PutOnScreen(NativeWindow& window, const QWidget& widget) {
  if (InsidePaint()) return;
  if (window.showSoon) window.Show();
  if (!widget.isVisible()) return;
  AwaitExposure(window);
  // Not a repaint of the widget: Qt would wait until the server has copied the image of the last paint of it.
  QEvent paint(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(window.frame.get(), &paint);
  PumpIfDue();
}

NestedLoop::NestedLoop() : depth_(running.depth), closed_(GateClosed()), painting_(running.painting) {
  ShowWaitingWindows();
  SettleAwayWindows();
  FlushCanvases();
  running.waiting += depth_;
  running.depth = 0;
  running.painting = 0;
  if (gate) gate->Close(false);
  WakeUp();
}

NestedLoop::~NestedLoop() {
  running.depth = depth_;
  running.waiting -= depth_;
  running.painting = painting_;
  if (gate) gate->Close(closed_);
  BeginTimes();
}

PaintScope::PaintScope() { ++running.painting; }
PaintScope::~PaintScope() { --running.painting; }

}  // namespace platform
