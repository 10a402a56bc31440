#include "platform/widgets/Buttons.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

#include "platform/qt/NativeCaption.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

namespace {

/// Width that a button needs around its caption, and a check box beside it, in logical pixels.
constexpr int kButtonBesides = 6;
constexpr int kCheckBoxBesides = 18;

/// A Qt button that gets the keyboard focus by Tab only, leaves the arrow keys to the window, and returns the focus to
/// the window when it is clicked.
template <class Button>
class TabButton : public Button {
 public:
  using Button::Button;

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    this->parentWidget()->setFocus();
    Button::mousePressEvent(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    switch (event->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_Left:
      case Qt::Key_Right:
        return event->ignore();
      case Qt::Key_Return:
      case Qt::Key_Enter:
        if constexpr (std::is_same_v<Button, QPushButton>) return this->click();
        return event->ignore();
      default:
        Button::keyPressEvent(event);
    }
  }
};

using TabPushButton = TabButton<QPushButton>;
using TabCheckBox = TabButton<QCheckBox>;

/// Creates the button of a control and connects it to the control's Action.
template <class Native, class Button, class Owner>
std::unique_ptr<Native> MakeButton(NativeWindow& window, Owner& owner, const String& text, int besides) {
  auto* button = new Button(WithoutAccessKey(text), window.content);
  button->setFocusPolicy(Qt::TabFocus);
  auto native = std::make_unique<Native>(window, button, besides);
  native->SetCaption(ToQString(text));
  // Assistive technology toggles a check box without a click.
  constexpr auto acted = std::is_same_v<Owner, CheckBox> ? &QAbstractButton::toggled : &QAbstractButton::clicked;
  QObject::connect(button, acted, button, [made = native.get(), &owner] { made->RaiseFromUser(owner.Action); });
  return native;
}

QAbstractButton& ButtonOf(const RectControl& control) {
  return static_cast<QAbstractButton&>(*control.NeedNative().widget);
}

}  // namespace

std::unique_ptr<NativeControl> PushButton::MakeNative(NativeWindow& window, const String& text) {
  return MakeButton<NativePushButton, TabPushButton>(window, *this, text, kButtonBesides);
}

void PushButton::Default(bool isDefault) {
  static_cast<NativePushButton&>(NeedNative()).isDefault = isDefault;
  static_cast<QPushButton&>(ButtonOf(*this)).setDefault(isDefault);
}

void PushButton::Cancel(bool isCancel) { static_cast<NativePushButton&>(NeedNative()).isCancel = isCancel; }

std::unique_ptr<NativeControl> BevelButton::MakeNative(NativeWindow& window, const String& text) {
  return MakeButton<NativeCaption, TabPushButton>(window, *this, text, kButtonBesides);
}

void BevelButton::Icon(const Ref<Picture>& icon) {
  QAbstractButton& button = ButtonOf(*this);
  auto& native = static_cast<NativeCaption&>(NeedNative());
  const QImage image = icon ? ToQImage(icon) : QImage();
  button.setIcon(QIcon(QPixmap::fromImage(image)));
  button.setIconSize(image.size());
  native.besides = kButtonBesides + (icon ? image.width() + 4 : 0);
  native.Fit();
}

std::unique_ptr<NativeControl> CheckBox::MakeNative(NativeWindow& window, const String& text) {
  return MakeButton<NativeCaption, TabCheckBox>(window, *this, text, kCheckBoxBesides);
}

bool CheckBox::Value() const { return ButtonOf(*this).isChecked(); }
void CheckBox::Value(bool checked) {
  QAbstractButton& box = ButtonOf(*this);
  const QSignalBlocker quiet(box);
  box.setChecked(checked);
}

}  // namespace platform
