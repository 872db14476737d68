// Files that lint --fix writes anew, and that files which pass are as the game writes them.
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/object_manager.h"
#include "tools/lint/fix.h"
#include "tools/lint_scene.h"

namespace fs = std::filesystem;

namespace {
class LintFixTest : public LintScene {};
}  // namespace

// Where the lines stand and how objects are numbered does not change what they say: whatever an editor or another
// system does to them is undone. Objects count from 1, generators from 42, and what points at them follows.
TEST_F(LintFixTest, UndoesEveryKindOfWriting) {
  std::minstd_rand random(7);
  constexpr const char* kEnds[] = {"", "", " ", "\t", "\r", "\n"};
  const auto noisy = [&](const std::string& good) {
    std::istringstream lines(good);
    std::string noise;
    for (std::string line; std::getline(lines, line);) {
      const auto colon = line.find(": ");
      if (colon != line.npos && line.back() != '{' && random() % 8 == 0) line.insert(colon + 1, 2, ' ');
      noise += (random() % 8 == 0 ? "\t" : "") + line + kEnds[random() % std::size(kEnds)] + '\n';
    }
    return noise;
  };
  for (const char* name : {"core", "crateyard", "bubblegens", "level1", "examples/springs"}) {
    const std::string good = Shipped(name);
    std::string renumbered = good;
    if (name == std::string("examples/springs")) {
      for (const char* id : {"1: {", "2: {"}) Replace(renumbered, std::string("\t") + id, "\t90: {");
      for (const auto& [from, to] : {std::pair{"ID: 43", "ID: 7"}, std::pair{"ID: 42", "ID: 43"}})
        while (renumbered.find(from) != std::string::npos) Replace(renumbered, from, to);
    }
    const std::string noise = noisy(renumbered);
    ASSERT_NE(noise, good);
    world.WriteFile("stage", noise);
    RunTool(FixFiles, "stage", result);
    EXPECT_EQ(world.ReadFile("stage"), good) << name;
    EXPECT_EQ(RunTool(FixFiles, "stage", result).find("written anew"), std::string::npos) << "a second time";
  }
}

// The old file stays whole when the new one cannot be written, and a link stays a link to a file of the same rights.
TEST_F(LintFixTest, KeepsTheFileThatItCannotReplace) {
  const std::string text = Changed(Shipped("core"), "restitution: 0.2", "restitution: 0.20");
  fs::create_directory("shut");
  world.WriteFile("shut/stage", text);
  fs::create_directory("shut/stage.tmp");  // where the new text would be gathered
  const std::string told = RunTool(FixFiles, "shut/stage", result);
  EXPECT_EQ(result, 1);
  EXPECT_NE(told.find("shut/stage: left as it is: cannot be written: "), std::string::npos) << told;
  EXPECT_EQ(world.ReadFile("shut/stage"), text);

  world.WriteFile("target", text);
  fs::permissions("target", fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("target", "link");
  RunTool(FixFiles, "link", result);
  EXPECT_TRUE(fs::is_symlink("link"));
  EXPECT_EQ(world.ReadFile("target"), Shipped("core"));
  EXPECT_EQ(fs::status("target").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

// The promise behind the rules: a file that passes comes back from the game as it is, whatever stands in it.
TEST_F(LintFixTest, WhatPassesComesBackFromTheGame) {
  constexpr const char* kValues[] = {"0",     "1",    "-1", "0.5", "1e-07", "123457", "-0",   "true",
                                     "false", "word", "3",  "20",  "1e+30", "42",     "8.25", "default"};
  std::minstd_rand random(11);
  int passed = 0;
  for (const char* name : {"crateyard", "hilltop", "fish2", "bubblegens", "examples/springs", "examples/episode"}) {
    const std::string good = Shipped(name);
    std::vector<std::size_t> values;  // where they begin
    for (auto at = good.find(": "); at != std::string::npos; at = good.find(": ", at + 1))
      if (good[at + 2] != '{' && good[at + 2] != '"') values.push_back(at + 2);
    for (int i = 0; i < 60; ++i) {
      const std::size_t at = values[random() % values.size()];
      std::string text = good;
      text.replace(at, text.find('\n', at) - at, kValues[random() % std::size(kValues)]);
      LintText(text);
      if (result != 0) continue;
      ++passed;
      world.Restart();
      EXPECT_EQ(WithoutIds(Document(Objects().LoadLevel("stage"))), WithoutIds(text)) << name << " at " << at;
    }
  }
  EXPECT_GT(passed, 100);
}
