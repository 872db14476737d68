#include "core/script_box.h"

#include <algorithm>

#include "core/event.h"
#include "core/object_manager.h"
#include "core/world_fixture.h"

namespace {

using ScriptBoxTest = WorldFixture;

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
  const auto names = RegisteredScriptNames();
  EXPECT_EQ(names.back(), "test twice");
  EXPECT_EQ(std::ranges::count(names, "test twice"), 1);
  EXPECT_EQ(CreateScript("Test twice").script, nullptr) << "names are case-sensitive";
}

TEST_F(ScriptBoxTest, FindsScriptsByExactNameAndReportsUnknownOnes) {
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

TEST_F(ScriptBoxTest, ScriptsAddedDuringAWalkHearTheRestOfIt) {
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
  const int payload = 7;
  AddHook(world.Add("b")).onEvent = [&](const Event&) { heard = -1; };
  first.onEvent = [&](const Event& event) {
    EXPECT_EQ(event.name, "DefaultName");
    EXPECT_EQ(event.data, &payload);
    grow();
  };
  SendEvent("a", Event("", &payload));
  EXPECT_EQ(heard, 60) << "those of one object, before the send returns";
  first.onEvent = [&](const Event&) { object.Get<ScriptBox>()->RetireScripts(); };
  object.HandleEvent(Event("x"));
  EXPECT_EQ(heard, 60) << "an emptied box ends the walk";
  SendEvent("nobody", Event("x"));
}

// A script that does not read what its block holds stands in front of a known one and a following object.
TEST_F(ScriptBoxTest, AScriptThatIsUnknownOrMisreadCostsNothingAroundIt) {
  const auto load = [&](const std::string& script) {
    world.ClearText();
    const auto created =
        Objects().LoadText("level", "{\n1: {\nName: a\nCore: false\nComponent: \"ScriptBox\" {\n" + script +
                                        "Component: \"VelocityCap\" {\n}\n}\n}\n2: {\nName: b\nCore: false\n}\n}\n");
    EXPECT_EQ(created.size(), 2u) << script;
    EXPECT_EQ(created.back()->name, "b") << script;
    return WithoutIds(Document({created.front()}));
  };
  const std::string capOnly = load("");
  const std::string both = load("Component: \"test hook\" {\nlevel: \n}\n");
  EXPECT_EQ(world.text(), "");
  EXPECT_EQ(load("Component: \"nope\" {\na: 1\nComponent: \"Vec3\" {\nx_: 1\n}\nb: 2\n}\n"), capOnly);
  EXPECT_EQ(world.text(), "nope could not be found.\n");
  EXPECT_EQ(load("Component: \"test hook\" {\nlevel: \nextra: 1\n}\n"), both);
  EXPECT_EQ(Count(world.text(), "could not be found."), 1);
  load("Component: \"test hook\" {\n}\n");
}

}  // namespace
