#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "output/NumberedNames.h"
#include "platform/Dialogs.h"

namespace {

std::vector<std::string> messages;

/// A folder of its own for each test.
class NumberedFiles : public testing::Test {
 protected:
  void SetUp() override { std::filesystem::create_directory(folder_); }
  void TearDown() override { std::filesystem::remove_all(folder_); }
  void Make(const std::string& name) { std::ofstream{folder_ / name}; }
  void Drop(const std::string& name) { std::filesystem::remove(folder_ / name); }
  std::string Next(const std::string& name) {
    auto file = platform::MakeRef<platform::FolderItem>(folder_ / name);
    GlobalUniversal::FileNameIncrement(file);
    EXPECT_EQ(file->Path().parent_path(), folder_);
    return file->DisplayName().Utf8();
  }

 private:
  const std::filesystem::path folder_ =
      std::filesystem::path(testing::TempDir()) / ("numbered" + std::to_string(getpid()));
};

}  // namespace

void platform::MsgBox(const String& text) {
  messages.push_back(text.Utf8());
}

TEST(PictureNames, AreMadeOfClusterAndSpecies) {
  EXPECT_EQ(output::SpeciesFileName("run7", "Fe").Utf8(), "run7_(Fe).png");
  EXPECT_EQ(output::SpeciesFileName("run 7.1", "?").Utf8(), "run_7_1_(?).png");
  EXPECT_EQ(output::CompositeFileName("run7", "Fe", "_", "Si").Utf8(), "run7_(Fe+_+Si).png");
}

TEST(PictureNames, TheNumberGoesBeforeTheLastPoint) {
  EXPECT_EQ(output::NumberedName("a.b.png", 2).Utf8(), "a.b_02.png");
  EXPECT_EQ(output::NumberedName("a", 99).Utf8(), "a_99");
  EXPECT_EQ(output::NumberedName(".png", 7).Utf8(), "_07.png");
  EXPECT_EQ(output::NumberedName("ä.", 100).Utf8(), "ä_100.");
}

TEST_F(NumberedFiles, TheFirstFreeNumberServes) {
  EXPECT_EQ(Next("run7_(Fe).png"), "run7_(Fe).png");
  Make("run7_(Fe).png");
  EXPECT_EQ(Next("run7_(Fe).png"), "run7_(Fe)_02.png");
  for (int n = 2; n <= 98; ++n) Make("run7_(Fe)_" + std::string(n < 10 ? "0" : "") + std::to_string(n) + ".png");
  EXPECT_EQ(Next("run7_(Fe).png"), "run7_(Fe)_99.png");
  Drop("run7_(Fe)_05.png");
  EXPECT_EQ(Next("run7_(Fe).png"), "run7_(Fe)_05.png");
  Make("run7_(Fe)_05.png");
  EXPECT_TRUE(messages.empty());
  Make("run7_(Fe)_99.png");
  Make("run7_(Fe)_100.png");
  EXPECT_EQ(Next("run7_(Fe).png"), "run7_(Fe)_100.png");
  EXPECT_EQ(messages, std::vector<std::string>{"filename increment exceeds 99"});
}
