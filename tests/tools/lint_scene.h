// A folder of shipped files and a few that a test needs, and lint run in it.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/script_box.h"
#include "folders.h"
#include "lint/lint.h"
#include "test_world.h"
#include "tools/printed.h"

inline std::string RunTool(int (*tool)(const std::vector<std::string>&, std::FILE*), const std::string& file,
                           int& result) {
  return Printed([&](std::FILE* out) { result = tool({file}, out); });
}

inline void Replace(std::string& text, const std::string& from, const std::string& to) {
  const auto at = text.find(from);
  ASSERT_NE(at, std::string::npos) << from;
  text.replace(at, from.size(), to);
}

inline std::string Changed(std::string text, const std::string& from, const std::string& to) {
  Replace(text, from, to);
  return text;
}

// The value as 1, whatever it was.
inline std::string Positive(const std::string& text, const std::string& key) {
  const auto at = text.find(key + ": ") + key.size() + 2;
  return text.substr(0, at) + "1" + text.substr(text.find('\n', at));
}

// The shipped pictures, and a few levels that others name.
class LintScene : public testing::Test {
 protected:
  LintScene() {
    std::filesystem::create_directory("Texture");
    for (const auto& picture : std::filesystem::directory_iterator(BuildFolder() + "/Texture"))
      if (picture.is_regular_file())
        std::filesystem::create_symlink(picture.path(), "Texture" / picture.path().filename());
    world.WriteFile("Texture/drawn.png", "no picture at all");
    for (const char* name : {"cannonball", "stunstars", "fish2", "crate", "puffer", "crateyard", "hilltop"})
      world.WriteFile(name, Shipped(name));
    world.WriteFile("hollow", "{\n}\n");
    GameObject& thing = world.AddSphere("thing", {}, {.inverseMass = 0});
    world.WriteFile("rock", Document({&thing}));
    thing.Insert(std::make_unique<ScriptBox>()).AddScript("DeathTimer");
    world.WriteFile("piece", Positive(Document({&thing}), "Time"));
    world.WriteFile("pair", Document({&world.Add("one"), &world.Add("two")}));
    GameObject& spawner = world.Add("spawner");
    spawner.Insert(std::make_unique<ScriptBox>()).AddScript("spawner");
    world.WriteFile("ring", Changed(Positive(Document({&spawner}), "spawnrate"), "typename: ", "typename: ring"));
  }

  std::string Shipped(const std::string& name) { return world.ReadFile(GameFolder() + "/" + name); }
  std::string Lint(const std::string& file) { return RunTool(LintFiles, file, result); }
  std::string LintText(const std::string& text, const std::string& name = "stage") {
    world.WriteFile(name, text);
    return Lint(name);
  }

  TestWorld world;
  int result = 0;
};
