#pragma once

#include "platform/widgets/MenuBar.h"

namespace Menu {

/// The one menu bar of all windows. Its check marks are the view settings; they are not saved.
class Menu : public platform::MenuBar {
 public:
  /// Created at the first call.
  static Menu& Instance();

 private:
  Menu();
};

/// An item of the menu bar by its name.
platform::MenuItem& Item(const platform::String& name);

/// Whether scaled maps are shown with hard pixel edges ("Exact Pixels").
bool SizeExact();

}  // namespace Menu
