#include <QKeySequence>
#include <algorithm>

#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Application.h"

namespace platform {

namespace {

std::vector<MenuBar::Native*> bars;

/// The text with an access key: its first letter that no previous menu uses.
QString WithAccessKey(const String& text, const std::vector<QPointer<QMenu>>& before) {
  const QString plain = ToQString(text);
  const auto taken = [&](QChar letter) {
    return std::any_of(before.begin(), before.end(), [&](const QPointer<QMenu>& menu) {
      const qsizetype mark = menu ? menu->title().indexOf('&') : -1;
      return mark >= 0 && menu->title()[mark + 1].toLower() == letter.toLower();
    });
  };
  for (qsizetype i = 0; i < plain.size(); ++i)
    if (plain[i].isLetter() && !taken(plain[i]))
      return WithoutAccessKey(FromQString(plain.left(i))) + '&' + WithoutAccessKey(FromQString(plain.mid(i)));
  return WithoutAccessKey(text);
}

QKeySequence KeyOf(const String& shortcut) { return QKeySequence(ToQString(shortcut).replace("Cmd", "Ctrl")); }

void Choose(MenuItem& item) {
  ShowState(item);  // Qt has toggled the check mark
  const auto choose = [name = item.Name()] {
    if (Application* application = Application::Current()) Dispatch([&] { application->ChooseMenuItem(name); });
  };
  GateClosed() ? RunSoon(choose) : choose();
}

QMenu* NewMenu(const QString& title) {
  auto* menu = new QMenu(title);
  menu->setToolTipsVisible(false);
  QObject::connect(menu, &QMenu::aboutToShow, menu, [] {
    if (Application* application = Application::Current()) application->UpdateMenus();
  });
  return menu;
}

}  // namespace

MenuItem::MenuItem(const String& name, const String& text, const String& key, bool autoEnable, bool checkable)
    : name_(name),
      text_(text),
      key_(key),
      autoEnable_(autoEnable),
      checkable_(checkable),
      native_(std::make_unique<Native>()) {}

MenuItem::~MenuItem() = default;

void MenuItem::Text(const String& text) {
  text_ = text;
  if (native_->action && !native_->menu) native_->action->setText(WithoutAccessKey(text));
}

void MenuItem::Checked(bool checked) {
  checked_ = checked;
  ShowState(*this);
}

void MenuItem::Enabled(bool enabled) { enabled_ = enabled; }

void ShowState(MenuItem& item) {
  QAction* action = item.NativeItem().action;
  if (!action || action->isSeparator()) return;
  if (item.NativeItem().menu) return;  // a menu can always be opened
  action->setEnabled(item.Enabled());
  action->setCheckable(item.Checkable());
  action->setChecked(item.Checked());
}

MenuBar::MenuBar() : native_(std::make_unique<Native>()) { bars.push_back(native_.get()); }

MenuBar::~MenuBar() {
  std::erase(bars, native_.get());
  for (const auto& menu : native_->menus) delete menu;
}

void MenuBar::Add(const MenuRow& row) {
  MenuItem* parent = row.parent ? &Item(row.parent) : nullptr;
  const bool checkable = row.role == MenuRow::Role::Check;
  items_.push_back(std::make_unique<MenuItem>(row.name, row.text, row.key ? row.key : "", row.autoEnable, checkable));
  MenuItem& item = *items_.back();
  byName_[item.Name()] = &item;
  auto& native = item.NativeItem();
  if (!parent) {
    native.menu = NewMenu(WithAccessKey(item.Text(), native_->menus));
    native.action = native.menu->menuAction();
    native_->menus.push_back(native.menu);
    return;
  }
  auto& above = parent->NativeItem();
  if (!above.menu) {  // an item becomes a menu when its first item is added
    above.menu = NewMenu(WithoutAccessKey(parent->Text()));
    if (above.action) above.action->setMenu(above.menu);
  }
  if (item.Text() == "-") {
    native.action = above.menu->addSeparator();
    return;
  }
  native.action = above.menu->addAction(WithoutAccessKey(item.Text()));
  native.action->setObjectName(ToQString(item.Name()));
  native.action->setShortcut(KeyOf(item.KeyboardShortcut()));
  native.action->setMenuRole(row.role == MenuRow::Role::Quit    ? QAction::QuitRole
                             : row.role == MenuRow::Role::About ? QAction::AboutRole
                                                                : QAction::NoRole);
  QObject::connect(native.action, &QAction::triggered, native.action, [&item] { Choose(item); });
  ShowState(item);
}

MenuItem& MenuBar::Item(const String& name) {
  const auto found = byName_.find(name);
  if (found == byName_.end()) ThrowNil("there is no menu item of that name");
  return *found->second;
}

void EndAllMenus() {
  for (MenuBar::Native* bar : bars)
    for (const auto& menu : bar->menus) delete menu;
}

}  // namespace platform
