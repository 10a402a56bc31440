#pragma once
/// The one menu bar. All windows that have it show the same items; its shortcuts work in every window.
///
/// Before a menu is shown or a shortcut is matched, the items are updated: each item's Enabled becomes its AutoEnable,
/// then the application's and the front window's Event_EnableMenuItems run. A chosen item is handled by the front
/// window's handler of that name; if there is none, or it returns false, by the application's. An item without a
/// handler does nothing.

#include <map>
#include <memory>
#include <vector>

#include "platform/values/String.h"

namespace platform {

class MenuItem {
 public:
  /// `key` is a shortcut such as "Cmd+N", or empty. Cmd means Ctrl.
  MenuItem(const String& name, const String& text, const String& key, bool autoEnable, bool checkable = false);
  ~MenuItem();

  const String& Name() const { return name_; }
  const String& KeyboardShortcut() const { return key_; }
  bool AutoEnable() const { return autoEnable_; }
  void AutoEnable(bool on) { autoEnable_ = on; }
  String Text() const { return text_; }
  void Text(const String& text);
  /// Whether the item can be checked: it then shows a box even while unchecked.
  bool Checkable() const { return checkable_; }
  bool Checked() const { return checked_; }
  void Checked(bool checked);
  bool Enabled() const { return enabled_; }
  void Enabled(bool enabled);

  struct Native;
  Native& NativeItem() { return *native_; }

 private:
  String name_, text_, key_;
  bool autoEnable_;
  bool checkable_;
  bool checked_ = false;
  bool enabled_ = true;
  std::unique_ptr<Native> native_;
};

/// One row of the program's table of menus. The text "-" makes a separator.
struct MenuRow {
  const char* name;
  const char* parent;  ///< name of a previous row, or nullptr for the menu bar itself
  const char* text;
  const char* key;
  bool autoEnable;
  /// Some desktops move Quit and About to another menu.
  enum class Role { Plain, Check, Quit, About } role = Role::Plain;
};

class MenuBar {
 public:
  MenuBar();
  virtual ~MenuBar();
  MenuBar(const MenuBar&) = delete;

  void Add(const MenuRow& row);
  /// The item of that name, regardless of letter case. Throws NilObjectException if there is none.
  MenuItem& Item(const String& name);
  const std::vector<std::unique_ptr<MenuItem>>& Items() const { return items_; }

  struct Native;
  Native& NativeBar() { return *native_; }

 private:
  std::vector<std::unique_ptr<MenuItem>> items_;
  std::map<String, MenuItem*> byName_;
  std::unique_ptr<Native> native_;
};

}  // namespace platform
