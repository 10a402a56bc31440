#include "appcore/Menu.h"

namespace Menu {
namespace {

using platform::MenuRow;
constexpr bool kAuto = true;
constexpr bool kNoAuto = false;

constexpr MenuRow kRows[] = {
    {"UntitledMenu3", nullptr, "File", "", kNoAuto},
    {"FileNewClear", "UntitledMenu3", "New/Clear Images", "Cmd+N", kAuto},
    {"FileClose", "UntitledMenu3", "Close", "Cmd+W", kAuto},
    {"UntitledMenu5", "UntitledMenu3", "-", "", kAuto},
    {"FileLoadSettings", "UntitledMenu3", "Load Settings...", "", kAuto},
    {"FileSaveSettings", "UntitledMenu3", "Save Settings...", "", kAuto},
    {"FileSaveImage", "UntitledMenu3", "Save Image", "Cmd+S", kAuto},
    {"FileChangeSaveLocation", "UntitledMenu3", "Change Save Location...", "", kAuto},
    {"UntitledMenu4", "UntitledMenu3", "-", "", kAuto},
    {"FileQuit", "UntitledMenu3", "Quit", "Cmd+Q", kAuto, MenuRow::Role::Quit},
    {"UntitledMenu0", nullptr, "Edit", "", kNoAuto},
    {"EditUndo", "UntitledMenu0", "Undo", "Cmd+Z", kNoAuto},
    {"UntitledMenu2", "UntitledMenu0", "-", "", kNoAuto},
    {"EditCut", "UntitledMenu0", "Cut", "Cmd+X", kNoAuto},
    {"EditCopy", "UntitledMenu0", "Copy", "Cmd+C", kNoAuto},
    {"EditPaste", "UntitledMenu0", "Paste", "Cmd+V", kNoAuto},
    {"EditClear", "UntitledMenu0", "Clear", "", kNoAuto},
    {"UntitledMenu1", "UntitledMenu0", "-", "", kNoAuto},
    {"EditSelectAll", "UntitledMenu0", "Select All", "Cmd+A", kAuto},
    {"EditDeleteSelection", "UntitledMenu0", "Delete Selection", "", kAuto},
    {"OptionsMenu", nullptr, "Smooth", "", kAuto},
    {"OptionsRawImage", "OptionsMenu", "Raw Image", "Cmd+0", kNoAuto},
    {"OptionsSmooth1", "OptionsMenu", "Smooth 1", "Cmd+1", kNoAuto},
    {"OptionsSmooth2", "OptionsMenu", "Smooth 2", "Cmd+2", kNoAuto},
    {"OptionsSmooth3", "OptionsMenu", "Smooth 3", "Cmd+3", kNoAuto},
    {"OptionsSmooth4", "OptionsMenu", "Smooth 4", "Cmd+4", kNoAuto},
    {"OptionsSmooth5", "OptionsMenu", "Smooth 5", "Cmd+5", kNoAuto},
    {"OptionsSmooth10", "OptionsMenu", "Smooth 10", "", kAuto},
    {"OptionsSmooth15", "OptionsMenu", "Smooth 15", "", kAuto},
    {"OptionsSmooth20", "OptionsMenu", "Smooth 20", "", kAuto},
    {"OptionsSmooth25", "OptionsMenu", "Smooth 25", "", kAuto},
    {"ColorsMenu", nullptr, "Colors", "", kAuto},
    {"Colorsc1", "ColorsMenu", "c1", "", kAuto},
    {"Colorsc2", "ColorsMenu", "c2", "", kAuto},
    {"Colorsc3", "ColorsMenu", "c3", "", kAuto},
    {"Colorsc4", "ColorsMenu", "c4", "", kAuto},
    {"Colorsc5", "ColorsMenu", "c5", "", kAuto},
    {"Colorsc6", "ColorsMenu", "c6", "", kAuto},
    {"Colorsc7", "ColorsMenu", "c7", "", kAuto},
    {"Colorsc8", "ColorsMenu", "c8", "", kAuto},
    {"Colorsc9", "ColorsMenu", "c9", "", kAuto},
    {"Colorsc10", "ColorsMenu", "c10", "", kAuto},
    {"Colorsc11", "ColorsMenu", "c11", "", kAuto},
    {"Colorsc12", "ColorsMenu", "c12", "", kAuto},
    {"Colorsc13", "ColorsMenu", "c13", "", kAuto},
    {"Colorsc14", "ColorsMenu", "c14", "", kAuto},
    {"Colorsc15", "ColorsMenu", "c15", "", kAuto},
    {"Colorsc16", "ColorsMenu", "c16", "", kAuto},
    {"Colorsc17", "ColorsMenu", "c17", "", kAuto},
    {"Colorsc18", "ColorsMenu", "c18", "", kAuto},
    {"Colorsc19", "ColorsMenu", "c19", "", kAuto},
    {"Colorsc20", "ColorsMenu", "c20", "", kAuto},
    {"WindowMenu", nullptr, "Size", "", kNoAuto},
    {"Window50", "WindowMenu", "50%", "", kNoAuto},
    {"Window100", "WindowMenu", "100%", "Cmd+=", kNoAuto},
    {"Window200", "WindowMenu", "200%", "", kNoAuto},
    {"Window300", "WindowMenu", "300%", "", kNoAuto},
    {"Window400", "WindowMenu", "400%", "", kNoAuto},
    {"Window500", "WindowMenu", "500%", "", kNoAuto},
    {"UntitledItem", "WindowMenu", "-", "", kAuto},
    {"SizeExact", "WindowMenu", "Exact Pixels", "", kNoAuto},
    {"WindowMenu1", nullptr, "Window", "", kAuto},
    {"MenuWindowOverview", "WindowMenu1", "Overview", "", kAuto},
    {"MenuWindowMain", "WindowMenu1", "Main", "", kNoAuto},
    {"MenuWindowResults", "WindowMenu1", "Results", "", kNoAuto},
    {"MenuWindowRGB", "WindowMenu1", "RGB", "", kAuto},
    {"AppleAbout", "WindowMenu1", "About Vornalite...", "", kAuto, MenuRow::Role::About},
};

}  // namespace

Menu::Menu() {
  for (const MenuRow& row : kRows) Add(row);
}

Menu& Menu::Instance() {
  // Never destroyed: the toolkit that its items belong to ends before static objects do.
  static Menu& menu = *new Menu;
  return menu;
}

platform::MenuItem& Item(const platform::String& name) { return Menu::Instance().Item(name); }

bool SizeExact() { return Item("SizeExact").Checked(); }

}  // namespace Menu
