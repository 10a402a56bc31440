#include "appcore/Menu.h"

namespace Menu {
namespace {

using platform::MenuRow;
constexpr bool kAuto = true;
constexpr bool kNoAuto = false;
constexpr auto kCheck = MenuRow::Role::Check;

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
    {"OptionsRawImage", "OptionsMenu", "Raw Image", "Cmd+0", kNoAuto, kCheck},
    {"OptionsSmooth1", "OptionsMenu", "Smooth 1", "Cmd+1", kNoAuto, kCheck},
    {"OptionsSmooth2", "OptionsMenu", "Smooth 2", "Cmd+2", kNoAuto, kCheck},
    {"OptionsSmooth3", "OptionsMenu", "Smooth 3", "Cmd+3", kNoAuto, kCheck},
    {"OptionsSmooth4", "OptionsMenu", "Smooth 4", "Cmd+4", kNoAuto, kCheck},
    {"OptionsSmooth5", "OptionsMenu", "Smooth 5", "Cmd+5", kNoAuto, kCheck},
    {"OptionsSmooth10", "OptionsMenu", "Smooth 10", "", kAuto, kCheck},
    {"OptionsSmooth15", "OptionsMenu", "Smooth 15", "", kAuto, kCheck},
    {"OptionsSmooth20", "OptionsMenu", "Smooth 20", "", kAuto, kCheck},
    {"OptionsSmooth25", "OptionsMenu", "Smooth 25", "", kAuto, kCheck},
    {"ColorsMenu", nullptr, "Colors", "", kAuto},
    {"Colorsc1", "ColorsMenu", "c1", "", kAuto, kCheck},
    {"Colorsc2", "ColorsMenu", "c2", "", kAuto, kCheck},
    {"Colorsc3", "ColorsMenu", "c3", "", kAuto, kCheck},
    {"Colorsc4", "ColorsMenu", "c4", "", kAuto, kCheck},
    {"Colorsc5", "ColorsMenu", "c5", "", kAuto, kCheck},
    {"Colorsc6", "ColorsMenu", "c6", "", kAuto, kCheck},
    {"Colorsc7", "ColorsMenu", "c7", "", kAuto, kCheck},
    {"Colorsc8", "ColorsMenu", "c8", "", kAuto, kCheck},
    {"Colorsc9", "ColorsMenu", "c9", "", kAuto, kCheck},
    {"Colorsc10", "ColorsMenu", "c10", "", kAuto, kCheck},
    {"Colorsc11", "ColorsMenu", "c11", "", kAuto, kCheck},
    {"Colorsc12", "ColorsMenu", "c12", "", kAuto, kCheck},
    {"Colorsc13", "ColorsMenu", "c13", "", kAuto, kCheck},
    {"Colorsc14", "ColorsMenu", "c14", "", kAuto, kCheck},
    {"Colorsc15", "ColorsMenu", "c15", "", kAuto, kCheck},
    {"Colorsc16", "ColorsMenu", "c16", "", kAuto, kCheck},
    {"Colorsc17", "ColorsMenu", "c17", "", kAuto, kCheck},
    {"Colorsc18", "ColorsMenu", "c18", "", kAuto, kCheck},
    {"Colorsc19", "ColorsMenu", "c19", "", kAuto, kCheck},
    {"Colorsc20", "ColorsMenu", "c20", "", kAuto, kCheck},
    {"WindowMenu", nullptr, "Size", "", kNoAuto},
    {"Window50", "WindowMenu", "50%", "", kNoAuto, kCheck},
    {"Window100", "WindowMenu", "100%", "Cmd+=", kNoAuto, kCheck},
    {"Window200", "WindowMenu", "200%", "", kNoAuto, kCheck},
    {"Window300", "WindowMenu", "300%", "", kNoAuto, kCheck},
    {"Window400", "WindowMenu", "400%", "", kNoAuto, kCheck},
    {"Window500", "WindowMenu", "500%", "", kNoAuto, kCheck},
    {"UntitledItem", "WindowMenu", "-", "", kAuto},
    {"SizeExact", "WindowMenu", "Exact Pixels", "", kNoAuto, kCheck},
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
  // Never destroyed: the toolkit, which its items use, ends before static objects are destroyed.
  static Menu& menu = *new Menu;
  return menu;
}

platform::MenuItem& Item(const platform::String& name) { return Menu::Instance().Item(name); }

bool SizeExact() { return Item("SizeExact").Checked(); }

}  // namespace Menu
