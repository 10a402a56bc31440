#include "platform/widgets/Displays.h"

#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <algorithm>

#include "platform/qt/NativeCaption.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

namespace {

class FilledWidget : public QWidget {
 public:
  using QWidget::QWidget;
  Color fill = kWhite;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    painter.fillRect(rect().adjusted(1, 1, -1, -1), ToQColor(fill));
  }
};

class LineWidget : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    const bool upright = height() > width();
    const QRect line = upright ? QRect(width() / 2, 0, 1, height()) : QRect(0, height() / 2, width(), 1);
    QPainter(this).fillRect(line, palette().color(QPalette::Mid));
  }
};

QLabel& LabelOf(const RectControl& control) { return static_cast<QLabel&>(*control.NeedNative().widget); }
QProgressBar& BarOf(const RectControl& control) { return static_cast<QProgressBar&>(*control.NeedNative().widget); }
NativePanel& PanelOf(const RectControl& control) { return static_cast<NativePanel&>(control.NeedNative()); }

void SetAlignment(QLabel& label, Qt::Alignment horizontal) {
  label.setAlignment(horizontal | (label.wordWrap() ? Qt::AlignTop : Qt::AlignVCenter));
}

}  // namespace

std::unique_ptr<NativeControl> StaticText::MakeNative(NativeWindow& window, const String& text) {
  auto* label = new QLabel(ToQString(text), window.content);
  label->setTextFormat(Qt::PlainText);
  label->setMargin(0);
  auto native = std::make_unique<NativeCaption>(window, label, 0);
  native->SetCaption(ToQString(text));
  return native;
}

String StaticText::Text() const { return FromQString(LabelOf(*this).text()); }

void StaticText::Text(const String& text) {
  QLabel& label = LabelOf(*this);
  label.setText(ToQString(text));
  static_cast<NativeCaption&>(NeedNative()).SetCaption(label.text());
}

void StaticText::TextColor(Color color) {
  QPalette palette = LabelOf(*this).palette();
  palette.setColor(QPalette::WindowText, ToQColor(color));
  LabelOf(*this).setPalette(palette);
}

void StaticText::Bold(bool bold) { static_cast<NativeCaption&>(NeedNative()).SetBold(bold); }

void StaticText::Align(TextAlign align) {
  SetAlignment(LabelOf(*this), align == TextAlign::Left    ? Qt::AlignLeft
                               : align == TextAlign::Right ? Qt::AlignRight
                                                           : Qt::AlignHCenter);
}

void StaticText::MultiLine(bool multiLine) {
  QLabel& label = LabelOf(*this);
  label.setWordWrap(multiLine);
  SetAlignment(label, label.alignment() & Qt::AlignHorizontal_Mask);
}

std::unique_ptr<NativeControl> Rectangle::MakeNative(NativeWindow& window, const String&) {
  auto native = std::make_unique<NativeControl>(window, new FilledWidget(window.content));
  SetRole(*native->widget, QAccessible::Graphic);
  return native;
}

Color Rectangle::FillColor() const { return static_cast<FilledWidget&>(*NeedNative().widget).fill; }

void Rectangle::FillColor(Color color) {
  auto& widget = static_cast<FilledWidget&>(*NeedNative().widget);
  widget.fill = color;
  widget.update();
}

std::unique_ptr<NativeControl> Separator::MakeNative(NativeWindow& window, const String&) {
  auto native = std::make_unique<NativeControl>(window, new LineWidget(window.content));
  SetRole(*native->widget, QAccessible::Separator);
  return native;
}

std::unique_ptr<NativeControl> ProgressBar::MakeNative(NativeWindow& window, const String&) {
  auto* bar = new QProgressBar(window.content);
  bar->setTextVisible(false);
  bar->setValue(0);
  return std::make_unique<NativeControl>(window, bar);
}

int ProgressBar::Value() const { return BarOf(*this).value(); }
void ProgressBar::Value(int value) { BarOf(*this).setValue(std::clamp(value, 0, BarOf(*this).maximum())); }
int ProgressBar::Maximum() const { return BarOf(*this).maximum(); }
void ProgressBar::Maximum(int maximum) { BarOf(*this).setRange(0, std::max(1, maximum)); }

std::unique_ptr<NativeControl> PagePanel::MakeNative(NativeWindow& window, const String&) {
  return std::make_unique<NativePanel>(window);
}

void PagePanel::PanelCount(int count) { PanelOf(*this).count = std::max(1, count); }
int PagePanel::PanelCount() const { return PanelOf(*this).count; }
int PagePanel::Value() const { return PanelOf(*this).value; }

void PagePanel::Value(int page) {
  if (page < 0 || page >= PanelCount()) ThrowOutOfBounds("page panel", page, PanelCount() - 1);
  PanelOf(*this).SetValue(page);
}

NativePanel::NativePanel(NativeWindow& owner) : NativeControl(owner, new QWidget(owner.content)) {
  widget->setAttribute(Qt::WA_TransparentForMouseEvents);
  SetRole(*widget, QAccessible::Pane);
  owner.panel = this;
}

void NativePanel::SetPlace(const Rect& newPlace) {
  const Rect old = place;
  NativeControl::SetPlace(newPlace);
  for (NativeControl* control : window.controls) {
    if (control->page == kNoPage) continue;
    Rect moved = control->place;
    moved.x += place.x - old.x;
    moved.y += place.y - old.y;
    control->SetPlace(moved);
    control->Follow(place.width - old.width, place.height - old.height);
  }
}

void NativePanel::SetValue(int newValue) {
  if (newValue == value) return;
  value = newValue;
  for (NativeControl* control : window.controls)
    if (control->page != kNoPage) control->SyncVisible();
}

}  // namespace platform
