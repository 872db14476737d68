#include "core/script_box.h"

#include <gtest/gtest.h>

#include "core/event.h"
#include "core/object_manager.h"
#include "test_world.h"

namespace {

struct Named final : Script {
  explicit Named(const char* text) : name(text) {}
  const char* GetName() const override { return name; }
  const char* name;
};

TEST(ScriptRegistry, ANameEnteredAgainGetsTheNewCreatorAndTheLastPlace) {
  RegisterScript("test twice", [] { return NewScript{std::make_unique<Named>("old"), nullptr}; });
  RegisterScript("test other", CreateOwned<HookScript>);
  RegisterScript("test twice", CreateOwned<HookScript>);
  EXPECT_STREQ(CreateScript("test twice").script->GetName(), HookScript::kName);
  EXPECT_EQ(RegisteredScriptNames().back(), "test twice");
  int times = 0;
  for (const auto name : RegisteredScriptNames()) times += name == "test twice" ? 1 : 0;
  EXPECT_EQ(times, 1);
  EXPECT_EQ(CreateScript("Test twice").script, nullptr) << "names are case-sensitive";
}

TEST(ScriptBox, FindsScriptsByExactNameAndReportsUnknownOnes) {
  TestWorld world;
  auto& box = world.Add("a").Insert(std::make_unique<ScriptBox>());
  Script& lower = box.AddScript(std::make_unique<Named>("spawner"));
  Script& upper = box.AddScript(std::make_unique<Named>("Spawner"));
  box.AddScript(std::make_unique<Named>("Spawner"));
  EXPECT_EQ(box.GetScript("spawner"), &lower);
  EXPECT_EQ(box.GetScript("Spawner"), &upper);
  EXPECT_EQ(FindScript("a", "Spawner"), &upper);
  EXPECT_EQ(FindScript("b", "Spawner"), nullptr);
  EXPECT_EQ(box.AddScript("nope"), nullptr);
  EXPECT_EQ(world.text(), "Could not add script nope.\n");
}

TEST(ScriptBox, ScriptsAddedDuringAWalkHearTheRestOfIt) {
  TestWorld world;
  auto& object = world.Add("a");
  int heard = 0;
  const auto grow = [&] {
    for (int i = 0; i < 20; ++i) {
      HookScript& added = AddHook(object);
      EXPECT_EQ(added.owner, &object);
      EXPECT_EQ(added.initialised, 1);
      added.onUpdate = [&] { ++heard; };
      added.onEvent = [&](const Event&) { ++heard; };
    }
  };
  HookScript& first = AddHook(object);
  first.onUpdate = grow;
  object.Update(0.1f);
  EXPECT_EQ(heard, 20);
  first.onUpdate = nullptr;
  first.onEvent = [&](const Event&) { grow(); };
  SendEvent("a", Event("x"));
  EXPECT_EQ(heard, 60);
  first.onEvent = [&](const Event&) { object.Get<ScriptBox>()->RetireScripts(); };
  SendEvent("a", Event("x"));
  EXPECT_EQ(heard, 60) << "an emptied box ends the walk";
}

TEST(ScriptBox, EventsReachTheScriptsOfOneObjectBeforeTheSendReturns) {
  TestWorld world;
  std::string heard;
  for (const char* name : {"a", "b"}) {
    auto& object = world.Add(name);
    for (int i = 0; i < 2; ++i)
      AddHook(object).onEvent = [&heard, name](const Event& event) {
        heard += name + std::string(event.name) + std::to_string(*static_cast<const int*>(event.data)) + ' ';
      };
  }
  const int payload = 7;
  SendEvent("b", Event("", &payload));
  EXPECT_EQ(heard, "bDefaultName7 bDefaultName7 ");
  SendEvent("nobody", Event("x"));
  Objects().FindObjectByName("b")->alive = false;
  SendEvent("b", Event("x"));
  EXPECT_EQ(heard, "bDefaultName7 bDefaultName7 ");
}

// An unknown script of three values, one of them a nested block, between two known ones; then a following object.
TEST(ScriptBox, AnUnknownScriptCostsNothingAroundIt) {
  TestWorld world;
  const std::string hook = "\t\t\tComponent: \"test hook\" {\n\t\t\t\tlevel: \n\t\t\t}\n";
  const std::string cap = "\t\t\tComponent: \"VelocityCap\" {\n\t\t\t}\n";
  const auto level = [](const std::string& scripts) {
    return "{\n\t1: {\n\t\tName: a\n\t\tCore: false\n\t\tComponent: \"ScriptBox\" {\n" + scripts +
           "\t\t}\n\t}\n\t2: {\n\t\tName: b\n\t\tCore: false\n\t}\n}\n";
  };
  const auto load = [&](const std::string& name, const std::string& scripts) {
    world.ClearText();
    world.WriteFile(name, level(scripts));
    const auto created = Objects().LoadLevel(name);
    EXPECT_EQ(created.size(), 2u) << name;
    EXPECT_EQ(created.back()->name, "b") << name;
    return Document({created.front()});
  };
  const std::string expected = load("clean", hook + cap);
  EXPECT_EQ(world.text(), "");
  EXPECT_EQ(WithoutIds(load("unknown", hook +
                                           "\t\t\tComponent: \"nope\" {\n\t\t\t\ta: 1\n\t\t\t\tComponent: \"Vec3\" {\n"
                                           "\t\t\t\t\tx_: 1\n\t\t\t\t}\n\t\t\t\tb: 2\n\t\t\t}\n" +
                                           cap)),
            WithoutIds(expected));
  EXPECT_EQ(world.text(), "nope could not be found.\n");
  EXPECT_EQ(WithoutIds(load("too many values",
                            "\t\t\tComponent: \"test hook\" {\n\t\t\t\tlevel: \n\t\t\t\textra: 1\n\t\t\t}\n" + cap)),
            WithoutIds(expected));
  EXPECT_EQ(Count(world.text(), "could not be found."), 1);
  load("too few values", "\t\t\tComponent: \"test hook\" {\n\t\t\t}\n" + cap);
}

TEST(ScriptBox, ReadsBackItsScriptsInOrderEachInitialisedOnce) {
  TestWorld world;
  auto& object = world.Add("a");
  AddHook(object);
  object.Get<ScriptBox>()->AddScript("VelocityCap");
  AddHook(object);
  Objects().SaveLevel("level");
  world.Restart();
  auto* box = Objects().LoadLevel("level").at(0)->Get<ScriptBox>();
  auto* first = static_cast<HookScript*>(box->GetScript(HookScript::kName));
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(first->initialised, 1);
  EXPECT_EQ(first->owner, box->owner);
  const std::string text = Document({box->owner});
  EXPECT_LT(text.find("test hook"), text.find("VelocityCap"));
  EXPECT_GT(text.rfind("test hook"), text.find("VelocityCap"));
}

}  // namespace
