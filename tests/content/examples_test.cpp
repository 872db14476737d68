// The levels that ship and the examples for level makers load without a complaint, run, and are written back as they
// stand.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/object_manager.h"
#include "folders.h"
#include "frame.h"
#include "game_events.h"
#include "lint/lint.h"
#include "test_world.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> LevelsIn(const std::string& folder) {
  std::vector<fs::path> levels;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file() && !entry.path().has_extension()) levels.push_back(entry.path());
  return levels;
}

}  // namespace

TEST(ShippedLevels, LoadRunAndComeBackLineForLine) {
  const auto shipped = LevelsIn(GameFolder());
  auto levels = LevelsIn(GameFolder() + "/examples");
  EXPECT_GE(levels.size(), 12u);
  levels.insert(levels.end(), shipped.begin(), shipped.end());
  for (const fs::path& level : levels) {
    SCOPED_TRACE(level.filename());
    TestWorld world;
    fs::create_directory_symlink(BuildFolder() + "/Texture", "Texture");
    for (const fs::path& other : shipped) fs::create_symlink(other, other.filename());
    if (!fs::exists(level.filename())) fs::create_symlink(level, level.filename());
    for (const std::string& line : LintLines(level.filename().string()))
      EXPECT_NE(line.find(": note: "), std::string::npos) << line;
    world.ClearText();
    const auto created = Objects().LoadLevel(level.filename().string());
    EXPECT_FALSE(created.empty());
    EXPECT_EQ(WithoutIds(Document(created)), WithoutIds(world.ReadFile(level.filename().string())));
    GameEvents events;
    Frame frame(events);
    for (int i = 0; i < 300; ++i) frame.Run();
    EXPECT_EQ(world.text(), "");
  }
}
