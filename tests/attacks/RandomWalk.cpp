/// Uses the whole program at random: drops samples and malformed pictures, clicks, drags, types, chooses menu items,
/// closes windows. Fails if the program crashes, hangs or leaves something on the screen that it would not paint again.
/// A walk depends on its seed only; a failing seed is printed.
///
/// VORNALITE_WALK_SECONDS: how long to start new walks (5; 0 for a single one). VORNALITE_WALK_SEED: the seed of the
/// first walk; the next ones count upward (1, so that test runs are the same).

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "catalogue/WindowOverview.h"
#include "mainwindow/Main.h"
#include "mainwindow/WindowSelectColor.h"
#include "platform/widgets/Dialogs.h"
#include "tests/support/Testing.h"
#include "tests/support/VisibleState.h"

using namespace platform;
namespace user = platform::testing;
namespace fs = std::filesystem;

namespace {

constexpr int kSteps = 150;
constexpr unsigned kSecondsAWalk = 120;  ///< after which it counts as hanging

class Walk {
 public:
  explicit Walk(unsigned seed) : random_(seed) {
    folder_ = fs::temp_directory_path() / ("vornalite-walk-" + std::to_string(::getpid()));
    fs::create_directories(folder_);
    Globals::OutputFolder = MakeRef<FolderItem>(folder_);
    for (const char* place : {"/tests/odd", "/samples"})
      for (const auto& entry : fs::recursive_directory_iterator(std::string(VORNALITE_SOURCE_DIR) + place))
        if (entry.is_regular_file()) files_[entry.path().parent_path()].push_back(entry.path());
    for (auto& [where, names] : files_) std::sort(names.begin(), names.end());
    Dialogs().msgBox = [](const String&) {};
    Dialogs().selectColor = [this](Color& color, const String&) {
      color = static_cast<Color>(Below(0x1000000));
      return Below(2) == 0;
    };
    Dialogs().selectFolder = [this](const FolderItemDialog&) {
      return Below(2) == 0 ? Ref<FolderItem>() : MakeRef<FolderItem>(folder_);
    };
  }
  ~Walk() {
    Dialogs() = {};
    fs::remove_all(folder_);
  }

  /// False if the screen shows something that would not be painted now.
  bool Run() {
    for (int step = 0; step < kSteps && WindowCount() > 0; ++step) {
      answering_ = true;
      user::Later([this] { AnswerPicker(); });
      Step();
      answering_ = false;
      user::ProcessEvents();
      if (step % 25 == 24 && !ScreenIsTrue(step)) return false;
    }
    return true;
  }

 private:
  int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  template <class Values>
  auto& OneOf(Values& values) {
    return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
  }

  bool ScreenIsTrue(int step) {
    for (const auto& line : user::VisibleState().Take())
      if (line.path.find("NOT REPAINTED") != std::string::npos) {
        std::printf("step %d: %s: %s\n", step, line.path.c_str(), line.text.c_str());
        return false;
      }
    return true;
  }

  /// The picker blocks its caller, so it is used from the event loop.
  void AnswerPicker() {
    if (!answering_ || WindowCount() == 0) return;
    auto& picker = WindowSelectColor::Instance();
    if (picker.Visible()) {
      user::Click(picker.Canvas1, Below(129), Below(138));
      PushButton* const buttons[] = {&picker.PBok, &picker.PBcancel, &picker.PBother};
      if (const int way = Below(5); way < 3)
        user::Click(*buttons[way]);
      else if (way == 3)
        user::CloseButton(picker);
      else
        user::Key(picker, "Escape");
    }
    user::Later([this] { AnswerPicker(); });
  }

  void DropFiles() {
    auto where = files_.begin();
    std::advance(where, Below(static_cast<int>(files_.size())));
    std::vector<std::string> paths;
    for (int count = 1 + Below(4); count > 0; --count) paths.push_back(OneOf(where->second));
    user::Drop(WindowOverview::Instance(), paths);
  }

  void CheckRow() {
    Listbox& list = WindowOverview::Instance().ListBox1;
    if (list.ListCount() > 0) user::ClickCellCheck(list, Below(list.ListCount()), WindowOverview::kCluster);
  }

  void ChooseMenuItem() {
    const auto& items = Menu::Menu::Instance().Items();
    const String& name = OneOf(items)->Name();
    if (name != "FileQuit" || Below(10) == 0) user::ChooseMenu(name);
  }

  void PressKey() {
    static const std::vector<std::string> kKeys = {"Up",     "Down",   "Left",   "Right",  "Tab",    "Space",
                                                   "Return", "Escape", "Ctrl+1", "Ctrl+5", "Ctrl+0", "Ctrl+A",
                                                   "Ctrl+Z", "Ctrl+S", "Ctrl+C", "Ctrl+W", "Ctrl+N", "Ctrl+="};
    Window& window = WindowAt(Below(WindowCount()));
    if (window.Visible()) user::Key(window, OneOf(kKeys));
  }

  void DragOnMap() {
    Main& main = Main::Instance();
    if (!user::OnScreen(main.cvTIF) || main.cvTIF.Width() == 0 || main.cvTIF.Height() == 0) return;
    user::Activate(main);
    for (const auto act : {user::MouseMove, user::MousePress})
      act(main.cvTIF, Below(main.cvTIF.Width()), Below(main.cvTIF.Height()));
    for (int i = Below(5); i > 0; --i) user::MouseDragTo(main.cvTIF, Below(400) - 50, Below(400) - 50);
    user::MouseRelease(main.cvTIF, Below(400) - 50, Below(400) - 50);
  }

  void ClickControl() {
    std::vector<RectControl*> controls;
    for (int i = 0; i < WindowCount(); ++i)
      for (Control* control : WindowAt(i).Controls())
        if (auto* rect = dynamic_cast<RectControl*>(control); rect && WindowAt(i).Visible() && user::OnScreen(*rect))
          controls.push_back(rect);
    if (controls.empty()) return;
    RectControl& control = *OneOf(controls);
    if (auto* menu = dynamic_cast<PopupMenu*>(&control); menu && menu->ListCount() > 0)
      user::ChooseRow(*menu, Below(menu->ListCount()));
    else if (control.Width() > 0 && control.Height() > 0)
      user::Click(control, Below(control.Width()), Below(control.Height()));
  }

  void Step() {
    Main& main = Main::Instance();
    const int kind = Below(12);
    if (kind == 0) DropFiles();
    if (kind == 1) CheckRow();
    if (kind == 2) ChooseMenuItem();
    if (kind == 3) PressKey();
    if (kind == 4 && Below(6) == 0) user::CloseButton(WindowAt(Below(WindowCount())));
    if (kind == 5) user::HoldKeys(Below(4) == 0, Below(4) == 0, Below(4) == 0);
    if (kind == 6 && main.Visible()) main.Height(main.MinHeight() + Below(300));
    if (kind == 7 || kind == 8) DragOnMap();
    if (kind > 8) ClickControl();
  }

  std::mt19937 random_;
  fs::path folder_;
  std::map<fs::path, std::vector<std::string>> files_;
  bool answering_ = false;
};

unsigned NumberFrom(const char* variable, unsigned otherwise) {
  const char* text = std::getenv(variable);
  return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

}  // namespace

int main(int, char** argv) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(NumberFrom("VORNALITE_WALK_SECONDS", 5));
  unsigned seed = NumberFrom("VORNALITE_WALK_SEED", 1);
  do {
    const pid_t walker = fork();
    if (walker == 0) {
      alarm(kSecondsAWalk);
      const StartedApp app(argv);
      const bool passed = Walk(seed).Run();
      std::fflush(nullptr);
      _exit(passed ? 0 : 1);
    }
    int status = 0;
    waitpid(walker, &status, 0);
    if (status != 0) {
      std::printf("Repeat the walk with VORNALITE_WALK_SECONDS=0 VORNALITE_WALK_SEED=%u %s\n", seed, argv[0]);
      return 1;
    }
    ++seed;
  } while (std::chrono::steady_clock::now() < end);
  return 0;
}
