#include "platform/widgets/Inputs.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSlider>
#include <QWheelEvent>

#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

namespace {

class MenuBox : public QComboBox {
 public:
  using QComboBox::QComboBox;
  void showPopup() override {
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + 24);  // items may be wider than the box
    QComboBox::showPopup();
  }
};

class SliderWidget : public QSlider {
 public:
  explicit SliderWidget(QWidget* parent) : QSlider(Qt::Horizontal, parent) {}

 protected:
  void wheelEvent(QWheelEvent* event) override {
    QSlider::wheelEvent(event);
    event->accept();  // at its end too: otherwise the window would scroll
  }
};

/// Assistive technology announces the chosen item as the name of the box, so `about` is its description.
struct NativeMenuBox : NativeControl {
  using NativeControl::NativeControl;
  void SetAbout(const QString& about) override { widget->setAccessibleDescription(about); }
};

QComboBox& BoxOf(const RectControl& control) { return static_cast<QComboBox&>(*control.NeedNative().widget); }
QSlider& SliderOf(const RectControl& control) { return static_cast<QSlider&>(*control.NeedNative().widget); }

}  // namespace

std::unique_ptr<NativeControl> PopupMenu::MakeNative(NativeWindow& window, const String&) {
  auto* box = new MenuBox(window.content);
  box->setFocusPolicy(Qt::TabFocus);
  auto native = std::make_unique<NativeMenuBox>(window, box);
  QObject::connect(box, &QComboBox::activated, box, [this, made = native.get()] { made->RaiseFromUser(Change); });
  return native;
}

void PopupMenu::DeleteAllRows() { BoxOf(*this).clear(); }

void PopupMenu::AddRow(const String& text) {
  QComboBox& box = BoxOf(*this);
  const int chosen = box.currentIndex();
  box.addItem(ToQString(text));
  box.setCurrentIndex(chosen);  // Qt has chosen the first row
}

int PopupMenu::ListCount() const { return BoxOf(*this).count(); }
int PopupMenu::ListIndex() const { return BoxOf(*this).currentIndex(); }

void PopupMenu::ListIndex(int index) {
  QComboBox& box = BoxOf(*this);
  box.setCurrentIndex(index >= 0 && index < box.count() ? index : -1);
  NeedNative().Raise(Change);
}

std::unique_ptr<NativeControl> Slider::MakeNative(NativeWindow& window, const String&) {
  auto* slider = new SliderWidget(window.content);
  slider->setFocusPolicy(Qt::TabFocus);
  auto native = std::make_unique<NativeControl>(window, slider);
  QObject::connect(slider, &QSlider::valueChanged, slider,
                   [this, made = native.get()] { made->RaiseFromUser(ValueChanged); });
  return native;
}

void Slider::Setup(const SliderSettings& settings) {
  QSlider& slider = SliderOf(*this);
  const QSignalBlocker quiet(slider);
  slider.setRange(settings.minimum, settings.maximum);
  slider.setSingleStep(settings.lineStep);
  slider.setPageStep(settings.pageStep);
  slider.setTracking(settings.liveScroll);
  slider.setValue(settings.value);
}

int Slider::Value() const { return SliderOf(*this).value(); }
void Slider::Value(int value) { SliderOf(*this).setValue(value); }

}  // namespace platform
