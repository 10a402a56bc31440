#include "tests/support/Story.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The part of a kept text below the heading of the stop.
std::string Section(const std::string& text, const std::string& heading) {
  const std::size_t at = text.find(heading);
  if (at == std::string::npos) return {};
  const std::size_t from = at + heading.size();
  const std::size_t end = text.find("\n== ", from - 1);
  return text.substr(from, end == std::string::npos ? end : end + 1 - from);
}

/// The line without the word, and whether it had the word.
std::pair<std::string, bool> Without(const std::string& word, std::string line) {
  const std::size_t at = line.find(" " + word);
  if (at != std::string::npos) line.erase(at, word.size() + 1);
  return {line, at != std::string::npos};
}

bool Updating() { return std::getenv("VORNALITE_UPDATE_STORIES") != nullptr; }

}  // namespace

Story::Story() {
  const char* scale = std::getenv("QT_SCALE_FACTOR");
  file_ = std::string(VORNALITE_SOURCE_DIR) + "/tests/stories/" +
          ::testing::UnitTest::GetInstance()->current_test_info()->name() + (scale ? std::string("-") + scale : "") +
          ".txt";
  std::ifstream stream(file_);
  kept_.assign(std::istreambuf_iterator<char>(stream), {});
  for (const auto& line : state_.Take()) before_[line.path] = line.text;
}

void Story::NoteErrors(const std::function<void()>& action) {
  ::testing::internal::CaptureStderr();
  action();
  for (const std::string& line : Lines(::testing::internal::GetCapturedStderr()))
    if (line.starts_with("vornalite: ")) Note("error: " + WithoutFolder(line));
}

std::string Story::WithoutFolder(std::string text) const {
  for (std::size_t at; (at = text.find(folder.string())) != std::string::npos;)
    text.replace(at, folder.string().size(), "<folder>");
  return text;
}

/// A line for each picture file in the folder, by name: the picture in it, or its size.
void Story::AddFiles(std::vector<user::StateLine>& lines) const {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_regular_file() || entry.path().extension() != ".png") continue;
    const auto picture = platform::FolderItem(entry.path()).OpenAsPicture();
    files["file/" + entry.path().filename().string()] =
        picture ? user::TextOf(picture) : std::to_string(entry.file_size()) + " bytes";
  }
  for (const auto& [path, text] : files) lines.push_back({path, text});
}

Story::~Story() {
  if (Updating()) std::ofstream(file_) << seen_;
}

void Story::Stop(const std::string& name) {
  const std::size_t shown = messages.size();
  auto lines = state_.Take();  // this paints: a failing paint shows messages
  AddFiles(lines);
  std::map<std::string, std::string> now;
  for (const auto& line : lines) now[line.path] = line.text;
  std::string seen = notes_;
  notes_.clear();
  for (; messagesSeen_ < shown; ++messagesSeen_) {
    std::string message = WithoutFolder(messages[messagesSeen_]);
    for (std::size_t at; (at = message.find('\n')) != std::string::npos;) message.replace(at, 1, " / ");
    seen += "message: \"" + message + "\"\n";
  }
  messagesSeen_ = messages.size();
  // The content of a hidden window is kept for the comparison when it is shown again.
  for (const auto& [path, text] : before_) {
    if (now.contains(path)) continue;
    const std::string owner = path.substr(0, path.find('/'));
    const auto window = now.find(owner);
    if (window != now.end() && Without("hidden", window->second).second)
      now[path] = text;
    else if (window != now.end() || path == owner || owner == "file")
      seen += path + ": gone\n";  // with a window all its lines go
  }
  // Things that changed only in one of these words share a line.
  std::map<std::string, std::string> alike;
  for (const auto& [path, text, change] : lines) {
    const auto old = before_.find(path);
    if (old != before_.end() && old->second == text) continue;
    std::string kind;
    for (const auto& [word, opposite] : {std::pair{"hidden", "shown"}, {"disabled", "enabled"}}) {
      const auto [rest, has] = Without(word, text);
      if (old != before_.end() && Without(word, old->second).first == rest) kind = has ? word : opposite;
    }
    if (kind.empty())
      seen += path + ": " + text + change + "\n";
    else
      alike[kind] += " " + path;
  }
  for (const auto& [kind, paths] : alike) seen += kind + ":" + paths + "\n";
  before_ = std::move(now);
  const std::string heading = "== " + name + "\n";
  seen_ += heading + seen;
  if (Updating()) return;
  const std::string kept = Section(kept_, heading);
  EXPECT_EQ(kept, seen) << "at \"" << name << "\" of " << file_;
}
