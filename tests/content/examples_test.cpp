// The examples for level makers load without a complaint, run, and are written back as they stand.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/object_manager.h"
#include "frame.h"
#include "game_events.h"
#include "test_world.h"
#include "tools/lint/lint.h"

namespace fs = std::filesystem;

TEST(Examples, LoadRunAndComeBackAsTheyAre) {
  int examples = 0;
  for (const auto& example : fs::directory_iterator(BRINEWHIRL_GAME_DIR "/examples")) {
    if (example.path().has_extension()) continue;
    SCOPED_TRACE(example.path().filename().string());
    ++examples;
    TestWorld world;
    fs::create_directory_symlink(BRINEWHIRL_BUILD_DIR "/Texture", "Texture");
    for (const auto& level : fs::directory_iterator(BRINEWHIRL_GAME_DIR))
      if (level.is_regular_file()) fs::create_symlink(level.path(), level.path().filename());
    fs::copy_file(example, "example");
    for (const std::string& line : LintLines("example"))
      EXPECT_NE(line.find(": not-preloaded: note: "), std::string::npos) << line;
    world.ClearText();
    const auto created = Objects().LoadLevel("example");
    EXPECT_EQ(WithoutIds(Document(created)), WithoutIds(world.ReadFile("example")));
    GameEvents events;
    Frame frame(events);
    for (int i = 0; i < 300; ++i) frame.Run();
    EXPECT_EQ(world.text(), "");
  }
  EXPECT_GE(examples, 12);
}
