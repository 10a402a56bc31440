/// Walks at random over the whole program: drops samples and malformed pictures, clicks, drags, types, chooses menu
/// items, closes windows. It fails when the program crashes, hangs or leaves something on the screen that it would not
/// paint again. A walk depends on its seed alone; the one that fails is printed.
///
/// VORNALITE_WALK_SECONDS: how long to go on with walk after walk (5). VORNALITE_WALK_FROM: the seed of the first walk;
/// the next ones count upward (1, so that a test run repeats). VORNALITE_WALK_SEED: the one walk to repeat.

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
constexpr unsigned kSecondsAWalk = 120;  ///< then it counts as hanging

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

  /// False if something was left on the screen that does not belong there.
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

  /// The picker holds its caller: what is done in it comes from the event loop.
  void AnswerPicker() {
    if (!answering_ || WindowCount() == 0) return;
    auto& picker = WindowSelectColor::Instance();
    if (picker.Visible()) {
      user::Click(picker.Canvas1, Below(129), Below(138));
      switch (Below(5)) {
        case 0:
          user::Click(picker.PBok);
          break;
        case 1:
          user::Click(picker.PBcancel);
          break;
        case 2:
          user::Click(picker.PBother);
          break;
        case 3:
          user::CloseButton(picker);
          break;
        default:
          user::Key(picker, "Escape");
      }
    }
    user::Later([this] { AnswerPicker(); });
  }

  std::vector<RectControl*> ControlsOnScreen() {
    std::vector<RectControl*> found;
    for (int i = 0; i < WindowCount(); ++i)
      for (Control* control : WindowAt(i).Controls())
        if (auto* rect = dynamic_cast<RectControl*>(control))
          if (WindowAt(i).Visible() && user::OnScreen(*rect)) found.push_back(rect);
    return found;
  }

  void DropFiles() {
    auto where = files_.begin();
    std::advance(where, Below(static_cast<int>(files_.size())));
    std::vector<std::string> paths;
    for (int count = 1 + Below(4); count > 0; --count) paths.push_back(OneOf(where->second));
    user::Drop(WindowOverview::Instance(), paths);
  }

  void Step() {
    static const std::vector<std::string> kKeys = {"Up",     "Down",   "Left",   "Right",  "Tab",    "Space",
                                                   "Return", "Escape", "Ctrl+1", "Ctrl+5", "Ctrl+0", "Ctrl+A",
                                                   "Ctrl+Z", "Ctrl+S", "Ctrl+C", "Ctrl+W", "Ctrl+N", "Ctrl+="};
    Main& main = Main::Instance();
    Listbox& list = WindowOverview::Instance().ListBox1;
    switch (Below(12)) {
      case 0:
        return DropFiles();
      case 1:
        if (list.ListCount() > 0) user::ClickCellCheck(list, Below(list.ListCount()), WindowOverview::kCluster);
        return;
      case 2: {
        const auto& items = Menu::Menu::Instance().Items();
        const String& name = items[static_cast<std::size_t>(Below(static_cast<int>(items.size())))]->Name();
        if (name != "FileQuit" || Below(10) == 0) user::ChooseMenu(name);
        return;
      }
      case 3: {
        Window& window = WindowAt(Below(WindowCount()));
        if (window.Visible()) user::Key(window, OneOf(kKeys));
        return;
      }
      case 4:
        if (Below(6) == 0) user::CloseButton(WindowAt(Below(WindowCount())));
        return;
      case 5: {
        user::HoldKeys(Below(4) == 0, Below(4) == 0, Below(4) == 0);
        return;
      }
      case 6:
        if (main.Visible()) main.Height(main.MinHeight() + Below(300));
        return;
      case 7:
      case 8:
        if (!user::OnScreen(main.cvTIF) || main.cvTIF.Width() == 0 || main.cvTIF.Height() == 0) return;
        user::Activate(main);
        user::MouseMove(main.cvTIF, Below(main.cvTIF.Width()), Below(main.cvTIF.Height()));
        user::MousePress(main.cvTIF, Below(main.cvTIF.Width()), Below(main.cvTIF.Height()));
        for (int i = Below(5); i > 0; --i) user::MouseDragTo(main.cvTIF, Below(400) - 50, Below(400) - 50);
        user::MouseRelease(main.cvTIF, Below(400) - 50, Below(400) - 50);
        return;
      default: {
        const auto controls = ControlsOnScreen();
        if (controls.empty()) return;
        RectControl& control = *OneOf(controls);
        if (auto* menu = dynamic_cast<PopupMenu*>(&control); menu && menu->ListCount() > 0)
          user::ChooseRow(*menu, Below(menu->ListCount()));
        else if (control.Width() > 0 && control.Height() > 0)
          user::Click(control, Below(control.Width()), Below(control.Height()));
      }
    }
  }

  std::mt19937 random_;
  fs::path folder_;
  std::map<fs::path, std::vector<std::string>> files_;
  bool answering_ = false;
};

/// One walk in this process.
int WalkOnce(char** argv, unsigned seed) {
  const StartedApp app(argv);
  return Walk(seed).Run() ? 0 : 1;
}

unsigned NumberFrom(const char* variable, unsigned otherwise) {
  const char* text = std::getenv(variable);
  return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

}  // namespace

int main(int, char** argv) {
  if (std::getenv("VORNALITE_WALK_SEED")) return WalkOnce(argv, NumberFrom("VORNALITE_WALK_SEED", 0));
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(NumberFrom("VORNALITE_WALK_SECONDS", 5));
  int walks = 0;
  for (unsigned seed = NumberFrom("VORNALITE_WALK_FROM", 1); std::chrono::steady_clock::now() < end; ++seed, ++walks) {
    const pid_t walker = fork();
    if (walker == 0) {
      alarm(kSecondsAWalk);
      const int status = WalkOnce(argv, seed);
      std::fflush(nullptr);
      _exit(status);
    }
    int status = 0;
    waitpid(walker, &status, 0);
    if (status != 0) {
      std::printf("The walk failed. Repeat it with VORNALITE_WALK_SEED=%u %s\n", seed, argv[0]);
      return 1;
    }
  }
  std::printf("%d walks\n", walks);
  return 0;
}
