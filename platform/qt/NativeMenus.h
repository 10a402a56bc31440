#pragma once

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <vector>

#include "platform/widgets/MenuBar.h"

namespace platform {

/// The menus are owned by the menu bar, but end with the toolkit if that ends first.
struct MenuItem::Native {
  QPointer<QAction> action;
  QPointer<QMenu> menu;  ///< the items below it, if it is a menu
};

struct MenuBar::Native {
  std::vector<QPointer<QMenu>> menus;  ///< those of the bar itself
};

/// Copies the item's state, all but its text, to the toolkit's action.
void ShowState(MenuItem& item);
/// Deletes the menus of all bars; when the toolkit ends.
void EndAllMenus();

}  // namespace platform
