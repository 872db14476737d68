#include "tools/simulate/simulate.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "physics/generator_host.h"
#include "physics/spring.h"
#include "test_world.h"
#include "tools/simulate/digest.h"
#include "tools/simulate/input_script.h"

namespace {

std::string ErrorOf(const std::string& text) {
  InputScript script;
  std::string error;
  return script.Parse(text, error) ? "" : error;
}

}  // namespace

TEST(InputScript, WrongLinesAreNamed) {
  EXPECT_EQ(ErrorOf("# nothing\n\n0 pad 0 connect # a pad\n3 key esc down\n4 mouse 10 20\n5 click left up\n"), "");
  EXPECT_EQ(ErrorOf("0 key d down\n1 key delete down\n").substr(0, 8), "line 2: ");
  for (const char* line :
       {"x key d down", "0 key d", "0 key d down now", "0 pad 4 connect", "0 pad 0 axis 6 1", "0 pad 0 axis 0 32768",
        "0 pad 0 button 16 down", "0 click side down", "0 jump", "-1 key d up"})
    EXPECT_EQ(ErrorOf(line).substr(0, 8), "line 1: ") << line;
}

TEST(InputScript, AppliesEventsInTheirFrameWhateverTheirOrderInTheFile) {
  InputScript script;
  std::string error;
  ASSERT_TRUE(script.Parse("2 pad 1 axis 0 100\n0 pad 1 connect\n", error)) << error;
  ScriptedPlatform platform;
  script.Apply(0, platform);
  platform.OpenGamepad(1);
  EXPECT_TRUE(platform.IsGamepadConnected(1));
  script.Apply(1, platform);
  EXPECT_EQ(platform.GetGamepadAxis(1, 0), 0);
  script.Apply(2, platform);
  EXPECT_EQ(platform.GetGamepadAxis(1, 0), 100);
}

// Equal scenes have one digest whatever IDs their objects have; a change in the last bit of one number shows.
TEST(Digest, TellsStatesApartAndIgnoresIds) {
  TestWorld world;
  const auto build = [&](float speed) {
    world.Restart();
    world.AddSphere("ball", {1.0f, 0.0f, 0.0f}, {.velocity = {speed, 0.0f, 0.0f}});
  };
  build(1.0f);
  const auto first = StateDigest();
  EXPECT_EQ(StateDigest(), first);
  build(1.0f);
  EXPECT_EQ(StateDigest(), first);
  build(1.0000001f);
  EXPECT_NE(StateDigest(), first);
  world.Restart();
  world.Add("gone");
  Objects().KillAll();
  Objects().RemoveDeadObjects();
  world.AddSphere("ball", {1.0f, 0.0f, 0.0f}, {.velocity = {1.0f, 0.0f, 0.0f}});
  EXPECT_EQ(StateDigest(), first);

  auto& anchor = world.AddSphere("anchor", {});
  GalePhysics::AdoptForceGenerator(std::make_unique<GalePhysics::Spring>(anchor, 1.0f, 1.0f));
  world.AddSphere("box", {5.0f, 5.0f, 0.0f})
      .Insert(std::make_unique<ScriptBox>())
      .AddScript(std::make_unique<GalePhysics::Spring>(anchor, 2.0f, 1.0f));
  const auto sprung = StateDigest();
  EXPECT_EQ(StateDigest(), sprung) << "a digest leaves no trace";
  EXPECT_TRUE(BodyOf(anchor).baseOfGenerators.empty());
}
