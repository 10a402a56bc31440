#pragma once

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <vector>

#include "platform/widgets/MenuBar.h"

namespace platform {

/// The menus belong to the menu bar, but go with the toolkit if it ends first.
struct MenuItem::Native {
  QPointer<QAction> action;
  QPointer<QMenu> menu;  ///< the items below it, if it is a menu
};

struct MenuBar::Native {
  std::vector<QPointer<QMenu>> menus;  ///< those of the bar itself
};

/// Makes the toolkit's item look like the item.
void ShowState(MenuItem& item);
/// Ends the menus of all bars, when the toolkit ends.
void EndAllMenus();

}  // namespace platform
