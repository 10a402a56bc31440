/// What a user waits for, until it is on the screen: loading (and its memory), a move of the linked cursor, a step by
/// the arrow keys, "Show All", the start. Run it by tools/virtual-display.sh. What happens once per run is measured in
/// new processes of this program.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <vector>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "bench/MapFiles.h"
#include "bench/OnScreen.h"
#include "catalogue/WindowOverview.h"
#include "composite/SpeciesWindow.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Dialogs.h"
#include "stack/ColorMapping.h"
#include "tests/support/Testing.h"

namespace user = platform::testing;
using bench::Compression;

namespace {

constexpr int kSpecies = 12;
constexpr int kLargeMap = 1024;

double Now() {
  // The same clock in all processes.
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Ends the program, whose figures would be wrong.
[[noreturn]] void Fail(const std::string& why) {
  std::fprintf(stderr, "windows_bench: %s\n", why.c_str());
  std::exit(1);
}

// In a new process, `windows_bench --run <name> <folder>` prints numbers.

std::string programPath;

/// Starts this program as a new process and returns the numbers that it prints, and the time of the start.
std::vector<double> RunInNewProcess(const std::string& name, const std::string& argument, double& started) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) Fail("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  std::string run = "--run", runName = name, runArgument = argument;
  char* arguments[] = {programPath.data(), run.data(), runName.data(), runArgument.data(), nullptr};
  pid_t child = 0;
  started = Now();
  if (posix_spawn(&child, programPath.c_str(), &actions, nullptr, arguments, environ) != 0) Fail("no process");
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  FILE* output = fdopen(ends[0], "r");
  std::vector<double> numbers;
  for (double number = 0; std::fscanf(output, "%lf", &number) == 1;) numbers.push_back(number);
  std::fclose(output);
  int status = 0;
  waitpid(child, &status, 0);
  if (status != 0) Fail("the run " + name + " failed");
  return numbers;
}

/// Bytes of this process in memory.
double Resident() {
  std::ifstream file("/proc/self/statm");
  double all = 0, resident = 0;
  file >> all >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// The windows.

WindowOverview& Overview() { return WindowOverview::Instance(); }

const std::filesystem::path& Folder() {
  static const bench::MapFolder folder;
  return folder.path;
}

/// Writes a cluster, drops it and returns its row.
int DropCluster(const std::vector<std::string>& paths) {
  user::Drop(Overview(), paths);
  return Overview().ListBox1.ListCount() - 1;
}

/// Loads a row unless it is shown, from the click to the last paint.
void Load(int row) {
  if (Overview().ListBox1.CellCheck(row, WindowOverview::kCluster)) return;
  user::ClickCellCheck(Overview().ListBox1, row, WindowOverview::kCluster);
  bench::AwaitServer();
  if (!Main::Instance().TIFready) Fail("the cluster was not loaded");
}

/// The limit of loading: the same files decoded by libtiff alone, and as many frames painted.
void DecodeAndPaint(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) bench::DecodeAlone(path);
  for (std::size_t i = 0; i < paths.size(); ++i) Main::Instance().cvTIF.Refresh();
  bench::AwaitServer();
}

const char* NameOf(Compression compression) { return compression == Compression::Lzw ? "lzw" : "none"; }

/// Rows of two clusters of the same species and size.
struct Clusters {
  std::vector<std::string> paths[2];
  int rows[2];
};

const Clusters& LargeClusters(Compression compression) {
  static std::map<Compression, Clusters> made;
  const auto [entry, isNew] = made.try_emplace(compression);
  for (int i = 0; i < 2 && isNew; ++i) {
    const std::string name = NameOf(compression) + std::to_string(i);
    entry->second.paths[i] = bench::WriteCluster(Folder(), name, kSpecies, kLargeMap, compression);
    entry->second.rows[i] = DropCluster(entry->second.paths[i]);
  }
  return entry->second;
}

// Loading.

void LoadWarm(benchmark::State& state, Compression compression) {
  const Clusters& clusters = LargeClusters(compression);
  int turn = 0;
  Load(clusters.rows[turn]);
  double limit = 0, taken = 0;
  for (auto _ : state) {
    turn = 1 - turn;
    const double begin = Now();
    DecodeAndPaint(clusters.paths[turn]);
    const double between = Now();
    Load(clusters.rows[turn]);
    const double end = Now();
    limit += 1.5 * (between - begin);
    taken += end - between;
    state.SetIterationTime(end - between);
  }
  state.counters["of_limit"] = taken / limit;
}
BENCHMARK_CAPTURE(LoadWarm, Uncompressed, Compression::None)->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK_CAPTURE(LoadWarm, Lzw, Compression::Lzw)->Unit(benchmark::kMillisecond)->UseManualTime();

/// In a new process: seconds of the first load, seconds of its limit, bytes that it took.
void PrintColdLoad(const std::filesystem::path& folder) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) paths.push_back(entry.path());
  bench::AwaitNewWindows(1, [] {});
  const int row = DropCluster(paths);
  bench::AwaitServer();
  const double before = Resident();
  const double begin = Now();
  Load(row);
  const double end = Now();
  const double after = Resident();
  DecodeAndPaint(paths);  // warms up
  const double beginLimit = Now();
  DecodeAndPaint(paths);
  std::printf("%.9f %.9f %.0f\n", end - begin, 1.5 * (Now() - beginLimit), after - before);
}

/// The time of the first load of a run, and its memory as a share of what two stacks and the pictures of Main need.
void LoadCold(benchmark::State& state, Compression compression, int species, int size) {
  const std::filesystem::path folder =
      Folder() / (std::string("cold-") + NameOf(compression) + std::to_string(size) + "-" + std::to_string(species));
  if (std::filesystem::create_directories(folder)) bench::WriteCluster(folder, "map", species, size, compression);
  double limit = 0, taken = 0, bytes = 0;
  for (auto _ : state) {
    double started = 0;
    const auto numbers = RunInNewProcess("cold-load", folder, started);
    taken += numbers.at(0);
    limit += numbers.at(1);
    bytes += numbers.at(2);
    state.SetIterationTime(numbers.at(0));
  }
  const double need = (2.0 * species + 2 * sizeof(platform::Color)) * size * size;
  state.counters["of_limit"] = taken / limit;
  state.counters["MB"] = bytes / static_cast<double>(state.iterations()) / 1e6;
  state.counters["of_need"] = bytes / static_cast<double>(state.iterations()) / need;
}
BENCHMARK_CAPTURE(LoadCold, Uncompressed, Compression::None, kSpecies, kLargeMap)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(3);
BENCHMARK_CAPTURE(LoadCold, Lzw, Compression::Lzw, kSpecies, kLargeMap)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(3);

/// How the first load grows with pixels and with maps.
void Growth(benchmark::State& state) {
  LoadCold(state, Compression::None, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
}
BENCHMARK(Growth)
    ->ArgNames({"species", "size"})
    ->ArgsProduct({{12, 60}, {512, 1024, 2048, 4096}})
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(1);

// A step by key.

/// Compared with recolouring alone plus showing one image of that size by the toolkit alone.
void ArrowKey(benchmark::State& state) {
  const Clusters& clusters = LargeClusters(Compression::None);
  Load(clusters.rows[0]);
  Main& main = Main::Instance();
  bench::ToolkitImage alone(kLargeMap, kLargeMap, {1200, 40});
  const LevelColors colors = ComposeColors(DisplayCurve(0, 255), Globals::LutRow(main.SelectedLUT));
  const auto picture = platform::NewPicture(kLargeMap, kLargeMap, 32);
  user::Activate(main);
  user::ProcessEvents();
  bench::AwaitServer();
  int steps = 0;
  double limit = 0, taken = 0;
  for (auto _ : state) {
    const std::int32_t before = main.SelectedRow;
    const double begin = Now();
    ColorPlane(main.TIFarray.Plane(before), colors, picture->Pixels());
    alone.repaint();
    bench::AwaitServer();
    const double between = Now();
    user::Key(main, steps++ / (kSpecies - 1) % 2 == 0 ? "Down" : "Up");
    bench::AwaitServer();
    const double end = Now();
    limit += between - begin;
    taken += end - between;
    state.SetIterationTime(end - between);
    if (main.SelectedRow == before) Fail("the key did not change the species");
  }
  state.counters["of_limit"] = taken / limit;
}
BENCHMARK(ArrowKey)->Unit(benchmark::kMillisecond)->UseManualTime();

// Species windows.

/// Loads a cluster of that many maps of 512 by 512.
void LoadSmallMaps(int species) {
  static std::map<int, int> rows;
  user::Click(Main::Instance().PB_SpeciesClose);
  const auto [entry, isNew] = rows.try_emplace(species);
  if (isNew)
    entry->second =
        DropCluster(bench::WriteCluster(Folder(), "small" + std::to_string(species), species, 512, Compression::None));
  Load(entry->second);
  if (Main::Instance().TIFubound() + 1 < species) Fail("species are missing");
}

/// From the click until each window has been painted.
void ShowAll(benchmark::State& state) {
  const int species = static_cast<int>(state.range(0));
  LoadSmallMaps(species);
  Main& main = Main::Instance();
  for (auto _ : state) {
    user::Activate(main);
    user::Click(main.PB_SpeciesClose);
    user::ProcessEvents();
    bench::AwaitServer();
    const double begin = Now();
    bench::AwaitNewWindows(species, [&] { user::Click(main.PB_AllSpecies); });
    state.SetIterationTime(Now() - begin);
  }
}
BENCHMARK(ShowAll)->Arg(12)->Arg(60)->Unit(benchmark::kMillisecond)->UseManualTime();

enum class Mark { Cross, Circle };
enum class Step { OnePixel, Far };

void MoveCursor(benchmark::State& state, Mark mark, Step step) {
  const int species = static_cast<int>(state.range(0));
  LoadSmallMaps(species);
  Main& main = Main::Instance();
  bench::AwaitNewWindows(species, [&] { user::Click(main.PB_AllSpecies); });
  // The window manager may activate the new windows at any later time.
  const auto bringToFront = [&] {
    const bool isFront = user::WaitUntil([&] {
      if (!main.IsActive) user::Activate(main);
      user::ProcessEvents();
      bench::AwaitServer();
      return main.IsActive;
    });
    if (!isFront) Fail("Main does not come to the front");
  };
  bringToFront();
  user::Click(mark == Mark::Circle ? main.BBcursorCircles : main.BBcursorArrow);
  int position = 0;
  for (auto _ : state) {
    if (!main.IsActive) {
      state.PauseTiming();
      bringToFront();
      state.ResumeTiming();
    }
    ++position;
    const int x = step == Step::OnePixel ? 100 + position % 300 : position % 2 * 300 + 100;
    const int y = step == Step::OnePixel ? 200 : position % 2 * 300 + 100;
    user::MouseMove(main.cvTIF, x, y);
    bench::AwaitServer();
    if (Globals::fCursorXold != x) Fail("the mark did not follow");
  }
  state.counters["limit_ms"] = species <= 20 ? 4 : 16;
}
BENCHMARK_CAPTURE(MoveCursor, CrossByOne, Mark::Cross, Step::OnePixel)
    ->Arg(20)
    ->Arg(60)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(MoveCursor, CrossFar, Mark::Cross, Step::Far)
    ->Arg(20)
    ->Arg(60)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(MoveCursor, CircleByOne, Mark::Circle, Step::OnePixel)
    ->Arg(20)
    ->Arg(60)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(MoveCursor, CircleFar, Mark::Circle, Step::Far)
    ->Arg(20)
    ->Arg(60)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The start.

/// From the start of a process to "Overview" on the screen, with the times to main and for the start-up sequence.
void Start(benchmark::State& state) {
  double linked = 0, made = 0;
  for (auto _ : state) {
    double started = 0;
    const auto times = RunInNewProcess("start", "", started);
    linked += times.at(0) - started;
    made += times.at(1) - times.at(0);
    state.SetIterationTime(times.at(2) - started);
  }
  const auto milliseconds = [&](double sum) { return 1e3 * sum / static_cast<double>(state.iterations()); };
  state.counters["to_main_ms"] = milliseconds(linked);
  state.counters["sequence_ms"] = milliseconds(made);
}
BENCHMARK(Start)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

int Run(const std::string& name, const std::string& argument, double atMain) {
  const double made = Now();
  if (name == "start") {
    bench::AwaitNewWindows(1, [] {});
    std::printf("%.9f %.9f %.9f\n", atMain, made, Now());
  } else if (name == "cold-load") {
    PrintColdLoad(argument);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const double atMain = Now();
  programPath = argv[0];
  const bool isRun = argc == 4 && std::string(argv[1]) == "--run";
  if (!isRun) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  }
  const StartedApp app(argv);
  platform::Dialogs().msgBox = [](const platform::String& text) { Fail(text.Utf8()); };
  if (isRun) return Run(argv[2], argv[3], atMain);
  user::ProcessEvents();
  benchmark::RunSpecifiedBenchmarks();
}
