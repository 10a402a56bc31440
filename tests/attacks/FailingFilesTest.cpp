// Failing file operations: every read of a load, every byte and every step of a save.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>

#include "tests/support/WindowsFixture.h"

namespace {

// A call fails, returns less than requested, or it and all later ones report the end of the file; or the disk is full.
constexpr int kNone = 0, kError = 1, kShort = 2, kEnd = 3, kFull = 4;

/// The fault of call number `at` on files of the folder.
struct Plan {
  int fault = kNone, at = 0;
  std::string folder;  ///< empty: nothing happens, and no call counts
  std::atomic<int> calls{0};
};
Plan plan;

/// The fault of this call.
int FaultNow() {
  const int call = ++plan.calls;
  return call == plan.at || (plan.fault == kEnd && call > plan.at) ? plan.fault : kNone;
}

bool InFolder(int file) {
  if (plan.folder.empty()) return false;
  char path[4096];
  const auto length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path);
  return length > 0 && std::string_view(path, static_cast<std::size_t>(length)).starts_with(plan.folder);
}

template <class Read>
ssize_t ReadBy(int file, std::size_t count, Read read) {
  const int fault = count > 0 && InFolder(file) ? FaultNow() : kNone;
  if (fault == kEnd) return 0;
  if (fault == kError) errno = EIO;
  return fault == kError ? -1 : read(fault == kShort ? (count + 1) / 2 : count);
}

/// Whether this step of a save fails.
bool StepFails() {
  if (plan.folder.empty() || FaultNow() != kError) return false;
  errno = EIO;
  return true;
}

}  // namespace

// Replace those of the C library in the whole program.
extern "C" {
ssize_t read(int file, void* to, size_t count) {
  return ReadBy(file, count, [&](size_t n) { return syscall(SYS_read, file, to, n); });
}
ssize_t pread(int file, void* to, size_t count, off_t at) {
  return ReadBy(file, count, [&](size_t n) { return syscall(SYS_pread64, file, to, n, at); });
}
size_t fread(void* to, size_t size, size_t count, FILE* file) {
  const int number = fileno(file);
  return InFolder(number) && FaultNow() != kNone ? 0 : fread_unlocked(to, size, count, file);
}
ssize_t pread64(int file, void* to, size_t count, off_t at) { return pread(file, to, count, at); }
int fsync(int file) { return StepFails() ? -1 : static_cast<int>(syscall(SYS_fsync, file)); }
int linkat(int from, const char* old, int to, const char* name, int flags) noexcept {
  return StepFails() ? -1 : static_cast<int>(syscall(SYS_linkat, from, old, to, name, flags));
}
int renameat2(int from, const char* old, int to, const char* name, unsigned flags) noexcept {
  return StepFails() ? -1 : static_cast<int>(syscall(SYS_renameat2, from, old, to, name, flags));
}
int rename(const char* old, const char* name) noexcept { return renameat2(AT_FDCWD, old, AT_FDCWD, name, 0); }
}

// Each fault is tried in a new process of this program, which gets it in its environment and prints the outcome.
class FailingFilesTest : public WindowsTest {
 protected:
  static std::string Contents(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  std::map<std::string, std::string> Files() {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      files[entry.path().filename()] = Contents(entry.path());
    return files;
  }

  /// Activates the fault in the environment for the files of this test.
  void BeginFault() {
    if (const char* fault = std::getenv("VORNALITE_FAULT")) std::sscanf(fault, "%d %d", &plan.fault, &plan.at);
    plan.folder = folder.string();
    if (plan.fault != kFull) return;
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{static_cast<rlim_t>(plan.at), RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  static void EndFault() {
    plan.folder.clear();
    const rlimit all{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &all);
  }

  /// The outcome of the test of that name under the fault.
  static std::string FateOf(const char* test, int fault, int at) {
    const std::string command = "VORNALITE_FAULT='" + std::to_string(fault) + " " + std::to_string(at) + "' " +
                                std::filesystem::read_symlink("/proc/self/exe").string() +
                                " --gtest_filter=FailingFilesTest." + test + " 2>&1";
    std::FILE* output = popen(command.c_str(), "r");
    std::string fate = "no fate", all;
    for (char line[4096]; std::fgets(line, sizeof line, output);) {
      all += line;
      if (std::strncmp(line, "fate: ", 6) == 0) fate = std::string(line).substr(6, std::strlen(line) - 7);
    }
    return pclose(output) == 0 ? fate : all;
  }
};

TEST_F(FailingFilesTest, Load) {
  const auto level = [](int species, int x, int y) { return (x * 5 + y * 11 + species * 20) % 256; };
  LoadThree(20, 16);
  std::vector<std::string> next;
  for (const char* name : {"next_Al.tif", "next_Fe.tif", "next_Mg.tif"})
    next.push_back(
        WriteMap(name, 24, 12, [=, i = static_cast<int>(next.size())](int x, int y) { return level(i, x, y); }));
  Drop(next);
  bool stackStood = false;
  platform::Dialogs().msgBox = [&](const platform::String& text) {
    messages.push_back(text.Utf8());
    stackStood = main().TIFarray.Ubound(2) == 19 && main().TIFarray(1, 3, 2) == Level(1, 3, 2);
  };
  ::testing::internal::CaptureStderr();
  BeginFault();
  CheckRow(1);
  EndFault();
  user::ProcessEvents();
  const std::string errors = ::testing::internal::GetCapturedStderr();
  if (messages.empty()) {
    for (int i = 0; i < 3 * 12 * 24; ++i)
      ASSERT_EQ(main().TIFarray(i / 288, i % 24, i / 24 % 12), level(i / 288, i % 24, i / 24 % 12)) << i;
    std::printf("fate: %s\n", plan.calls < plan.at ? "not reached" : "loaded");
    return;
  }
  // The first map's failure leaves the stack; a later one's leaves it half filled. Both end the program.
  EXPECT_NE(errors.find("next_"), std::string::npos) << errors;
  EXPECT_TRUE(messages[0] == "Error in Open_LoadNew.\nCode 6" ||
              (messages[0] == "Error in Open_LoadNew.\nCode 3" && stackStood))
      << messages[0];
  EXPECT_EQ(platform::WindowCount(), 0);
  std::printf("fate: failed\n");
}

/// A map file whose reads fail counts as one without the species that could not be read.
TEST_F(FailingFilesTest, MapFile) {
  const std::string path = WriteMapFile("map.xray", {"Fe"});
  BeginFault();
  Drop({path});
  EndFault();
  EXPECT_LE(overview().ListBox1.ListCount(), 1);
  const bool whole = overview().ListBox1.ListCount() == 1 && Cell(0, WindowOverview::kSpecies) == "Fe";
  std::printf("fate: %s\n", whole ? plan.calls < plan.at ? "not reached" : "loaded" : "failed");
}

TEST_F(FailingFilesTest, EveryReadOfALoad) {
  for (const auto& [load, fault] : {std::pair{"Load", kError}, {"Load", kShort}, {"Load", kEnd}, {"MapFile", kError}}) {
    int at = 1;
    for (std::string fate; fate != "not reached"; ++at) {
      ASSERT_LT(at, 200);
      fate = FateOf(load, fault, at);
      // A reader may not need the rest; after a short read it continues.
      EXPECT_TRUE(fate == "not reached" || fate == "loaded" || (fault != kShort && fate == "failed"))
          << load << ", fault " << fault << " of read " << at << ": " << fate;
    }
    EXPECT_GT(at, 4) << load << ", fault " << fault << ": fewer reads than files";
  }
}

TEST_F(FailingFilesTest, Save) {
  LoadThree(20, 16);
  WriteBytes("map_(Al).png", "mine");
  const auto before = Files();
  BeginFault();
  user::Click(main().PB_SaveImage);
  EndFault();
  auto after = Files();
  EXPECT_EQ(platform::WindowCount(), 3);
  EXPECT_TRUE(messages.empty()) << messages[0];
  if (after == before) return void(std::printf("fate: nothing\n"));
  const std::string saved = after["map_(Al)_02.png"];
  after.erase("map_(Al)_02.png");
  EXPECT_EQ(after, before);
  const auto picture = platform::FolderItem(folder / "map_(Al)_02.png").OpenAsPicture();
  ASSERT_TRUE(picture);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 20; ++x)
      ASSERT_EQ(picture->RGBSurface().Pixel(x, y), Globals::lut(10, Level(0, x, y))) << x << ',' << y;
  if (plan.calls < plan.at) return void(std::printf("fate: not reached\n"));
  std::printf("fate: saved %zu\n", saved.size());
}

TEST_F(FailingFilesTest, EveryByteAndStepOfASave) {
  const std::string whole = FateOf("Save", kNone, 0);
  ASSERT_TRUE(whole.starts_with("saved ")) << whole;
  const int size = std::stoi(whole.substr(6));
  for (int bytes = 0; bytes < size; bytes += 1 + size / 12)
    EXPECT_EQ(FateOf("Save", kFull, bytes), "nothing") << "room for " << bytes << " bytes of " << size;
  EXPECT_EQ(FateOf("Save", kFull, size - 1), "nothing");
  std::string fate;
  for (int at = 1; fate != "not reached"; ++at) {
    ASSERT_LT(at, 20);
    fate = FateOf("Save", kError, at);
    // The last step, which makes the new name durable, may fail: the picture is complete.
    EXPECT_TRUE(fate == "nothing" || (at > 1 && (fate == "not reached" || fate.starts_with("saved"))))
        << "step " << at << ": " << fate;
  }
}
