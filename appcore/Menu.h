#pragma once

#include "platform/widgets/MenuBar.h"

namespace Menu {

/// The one menu bar of all windows. Its check marks hold the view settings for the length of a run.
class Menu : public platform::MenuBar {
 public:
  /// Made at the first reference.
  static Menu& Instance();

 private:
  Menu();
};

/// An item of the menu bar by its name.
platform::MenuItem& Item(const platform::String& name);

/// Whether scaled maps are shown with hard pixel edges ("Exact Pixels").
bool SizeExact();

}  // namespace Menu
