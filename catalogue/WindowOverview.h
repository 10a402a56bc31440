#pragma once

#include <cstdint>

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Listbox.h"
#include "platform/widgets/Window.h"

/// The list of all clusters, where work begins. Row r of ListBox1 is row r of Globals::ooo.
///
///   +--------------------------------------------------------------+
///   | File/Cluster Name | Species Contained                        |
///   | [x] garnet_A      | Al, Ca, Fe, K, Mg, Mn, Si, Ti            |   black: held, red: missing
///   | [ ] garnet_B      | Al, Ca, Fe, K, Mg, Mn, Si, Ti            |
///   +--------------------------------------------------------------+
///   (Delete Selection)  Species in Red: Missing   [ ] Short Species Names
class WindowOverview : public platform::SingletonWindow<WindowOverview> {
 public:
  WindowOverview();

  platform::Listbox ListBox1;
  platform::PushButton PBdeleteselection;
  platform::StaticText STredmissing;
  platform::CheckBox CBnoSpeciesExtensions;

  // Columns of ListBox1.
  static constexpr int kNumber = 0;   ///< number of the row in this state of the catalogue; hidden
  static constexpr int kCluster = 1;  ///< name, with the box that shows the cluster
  static constexpr int kSpecies = 2;

  void Event_Open() override;
  bool Event_CancelClose(bool appQuitting) override;
  /// Adds dropped files: all pictures form one cluster, each map file forms its own.
  void Event_DropObject(platform::DragItem& items, int action) override;

  /// Removes from each name an underscore with one character after it and then up to two digits at the end.
  void NoUnderscoreExtensions(platform::Array<platform::String>& names);
  /// Recomputes species, union, existence table, row numbers and cells from the files of the catalogue.
  void UpdateShortNames();
  /// Unchecks all rows without changing what is displayed.
  void UncheckAll();
  void Remove1Species(int row);
  /// Removes the selected rows and updates the rest.
  void RemoveSpecies();
  /// Has Main show the checked row, or nothing.
  void CheckForDisplayFileChange();

  void AddMenuHandlers();
  bool _EditSelectAll_Action();
  bool _FileClose_Action();

 private:
  void CreateControls();
  platform::Array<platform::String> SpeciesOfCluster(int row);
  void AddCluster(const platform::String& name);

  void ListBox1_Open();
  void ListBox1_Change();
  bool ListBox1_HeaderPressed(int column);
  bool ListBox1_CellTextPaint(platform::Graphics& g, int row, int column, int x, int y);
  std::optional<platform::String> ListBox1_CellTip(int row, int column);
  bool ListBox1_CellBackgroundPaint(platform::Graphics& g, int row, int column);
  void ListBox1_CellAction(int row, int column);
  void PBdeleteselection_Action();
  void CBnoSpeciesExtensions_Action();
};
