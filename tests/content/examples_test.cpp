// The examples for level makers load without a complaint, run, and are written back as they stand.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/object_manager.h"
#include "frame.h"
#include "game_events.h"
#include "test_world.h"
#include "tools/lint/lint.h"

namespace {

constexpr int kFrames = 300;

std::vector<std::filesystem::path> Examples() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(BRINEWHIRL_GAME_DIR "/examples"))
    if (!entry.path().has_extension()) files.push_back(entry.path());
  return files;
}

}  // namespace

TEST(Examples, LoadRunAndComeBackAsTheyAre) {
  ASSERT_GE(Examples().size(), 12u);
  for (const auto& example : Examples()) {
    SCOPED_TRACE(example.filename().string());
    TestWorld world;
    std::filesystem::create_directory_symlink(BRINEWHIRL_BUILD_DIR "/Texture", "Texture");
    for (const auto& level : std::filesystem::directory_iterator(BRINEWHIRL_GAME_DIR))
      if (level.is_regular_file()) std::filesystem::create_symlink(level.path(), level.path().filename());
    std::filesystem::copy_file(example, "example");
    for (const std::string& line : LintLines("example"))
      EXPECT_NE(line.find(": not-preloaded: note: "), std::string::npos) << line;
    world.ClearText();
    const auto created = Objects().LoadLevel("example");
    EXPECT_EQ(world.text(), "");
    EXPECT_EQ(WithoutIds(Document(created)), WithoutIds(world.ReadFile("example")));
    GameEvents events;
    Frame frame(events);
    for (int i = 0; i < kFrames; ++i) frame.Run();
    EXPECT_EQ(world.text(), "");
  }
}
