// Loading and saving whole levels, sound and damaged.
#include <filesystem>
#include <random>
#include <sstream>

#include "core/file_name.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "physics/generator_host.h"
#include "physics/gravity_generator.h"
#include "physics/sphere_collider.h"
#include "physics/spring.h"

using GalePhysics::AdoptGenerator;
using GalePhysics::GravityGenerator;
using GalePhysics::RigidBody;
using GalePhysics::Spring;

namespace {

constexpr char kEmptyObject[] = "\t1: {\n\t\tName: thing\n\t\tCore: false\n\t}\n";

std::string Level(const std::string& objects) { return "{\n" + objects + "}\n"; }

class LevelTest : public WorldFixture {
 protected:
  /// Saves a scene with every kind of block that the physics and scripts write: two generators, a body on a spring and
  /// its anchor, a box, a sphere and scripts.
  std::string SaveScene() {
    auto& anchor = world.AddBox("anchor", {3.0f, 0.0f, 0.0f}, {.inverseMass = 0.0f});
    auto& hung = world.AddSphere("hung", {0.0f, 0.0f, 0.5f}, {.velocity = {0.1f, 0.2f, 0.0f}, .damping = 0.75f});
    BodyOf(hung).AddGenerator(&AdoptGenerator(std::make_unique<Spring>(anchor, 10.0f, 2.0f)));
    BodyOf(hung).AddGenerator(&AdoptGenerator(std::make_unique<GravityGenerator>(Vec3{0.0f, -0.5f, 0.0f})));
    AddHook(hung);
    hung.Get<ScriptBox>()->AddScript("VelocityCap");
    world.Add("plain").Insert(std::make_unique<ScriptBox>());
    EXPECT_TRUE(Objects().SaveLevel("scene"));
    return world.ReadFile("scene");
  }
  /// Begins anew and loads the saved scene with some words replaced.
  std::vector<GameObject*> LoadChanged(std::initializer_list<std::pair<std::string, std::string>> changes) {
    std::string text = SaveScene();
    for (const auto& [from, to] : changes) text.replace(text.find(from), from.size(), to);
    world.Restart();
    return Objects().LoadText("changed", text);
  }
  void LoadAndRun(const std::string& text) {
    Objects().LoadText("damaged", text);
    for (std::size_t i = 0; i < Objects().GetObjects().size(); ++i) Objects().GetObjects()[i]->Update(0.0085f);
    world.RunFrame();
    for (const auto& object : Objects().GetObjects()) ASSERT_TRUE(IsFinite(PositionOf(*object)));
  }
  RigidBody& Hung() { return BodyOf(*Objects().FindObjectByName("hung")); }
  void ExpectHungIsPulled() {
    Hung().velocity = {};
    world.Step();
    EXPECT_GT(Hung().velocity.x, 0.0f);
  }
};

using DamagedLevelTest = LevelTest;

TEST_F(LevelTest, GeneratorsAndTheirLinksSurviveSavingAndLoading) {
  const std::string saved = SaveScene();
  EXPECT_TRUE(saved.starts_with("{\n\t1337: {\n\t\tName: AForceBox\n\t\tCore: true\n\t\tComponent: \"Transform\" {\n"));
  for (const char* part :
       {"\t\t\tComponent: \"patricidal\" {\n\t\t\t}\n\t\t\tComponent: \"spring\" {\n\t\t\t\tMy ID: 42\n",
        "\"gravity\" {\n\t\t\t\tMy ID: 43\n", "base of: 1\n\t\t\tgenerator ID: 42\n",
        "num force generators: 2\n\t\t\tgenerator ID: 42\n\t\t\tgenerator ID: 43\n"})
    EXPECT_EQ(Count(saved, part), 1) << part;
  Objects().SaveLevel("again");
  EXPECT_EQ(Count(world.ReadFile("again"), "\"spring\" {\n\t\t\t\tMy ID: 42\n"), 1) << "every save numbers anew";

  world.Restart();
  world.Add("shifts the IDs");
  const auto created = Objects().LoadLevel("scene");
  EXPECT_EQ(world.text(), "");
  EXPECT_EQ(WithoutIds(Document(created)), WithoutIds(saved));
  ASSERT_EQ(Hung().generators.size(), 2u);
  const auto& spring = static_cast<Spring&>(*Hung().generators[0]);
  EXPECT_EQ(spring.baseId, static_cast<int>(Objects().FindObjectByName("anchor")->id)) << "tied to the anchor's new ID";
  EXPECT_EQ(spring.owner, &GalePhysics::GetGeneratorHost());
  const auto* hook = static_cast<HookScript*>(FindScript("hung", HookScript::kName));
  EXPECT_EQ(hook->initialised, 1);
  EXPECT_EQ(hook->owner, Hung().owner);

  // The copy of the host dissolves at its first update; its generators go on pulling.
  GameObject& copy = *created[0];
  EXPECT_TRUE(copy.alive);
  copy.Update(0.0085f);
  EXPECT_FALSE(copy.alive);
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Objects().FindObjectByName("AForceBox"), nullptr);
  ExpectHungIsPulled();
  EXPECT_NE(GalePhysics::GetGeneratorHost().Get<ScriptBox>()->GetScript("spring"), nullptr);
}

TEST_F(LevelTest, AHostCopyThatDiesUnsweptTakesNoGeneratorAlong) {
  LoadChanged({});
  for (const auto& object : Objects().GetObjects()) object->alive = object->name == "hung" || object->name == "anchor";
  Objects().RemoveDeadObjects();
  ExpectHungIsPulled();
}

TEST_F(LevelTest, NegativeMassCountsAndGeneratorsThatTheFileDoesNotHoldDoNoHarm) {
  LoadChanged({{"inverseMass: 1", "inverseMass: -1"},
               {"generators: 2\n\t\t\tgenerator ID: 42", "generators: 2000000000\n\t\t\tgenerator ID: 99"}});
  EXPECT_EQ(Objects().GetObjects().size(), 4u);
  EXPECT_EQ(Hung().inverseMass, 0.0f);
  ASSERT_EQ(Hung().generators.size(), 1u);
  EXPECT_STREQ(Hung().generators[0]->GetName(), "gravity");
  EXPECT_EQ(Count(world.text(), "no force generator 99"), 1);
}

TEST_F(LevelTest, ALineTooManyIsToldWithWhatItCosts) {
  const std::string closing = "\t\t\t}\n\t\t}\n\t}\n";
  std::string text = Document({&world.Add("first"), &world.Add("second"), &world.Add("third")});
  text.insert(text.find(closing), "\t\t\t\tw_: 1\n");
  EXPECT_EQ(Objects().LoadText("longer", text).size(), 1u);
  EXPECT_EQ(Count(world.text(), "closing lines do not match"), 1);
}

TEST_F(LevelTest, ALevelReadInsideAnotherHasItsOwnGenerators) {
  for (const float pull : {-5.0f, -1.0f}) {
    if (pull == -1.0f) AddHook(world.Add("nest")).level = "inner";
    auto& body = world.AddSphere("falls", {});
    BodyOf(body).AddGenerator(&AdoptGenerator(std::make_unique<GravityGenerator>(Vec3{0.0f, pull, 0.0f})));
    Objects().SaveLevel(pull == -5.0f ? "inner" : "outer");
    world.Restart();
  }
  const auto created = Objects().LoadLevel("outer");
  ASSERT_EQ(created.size(), 3u) << "only the objects of the outer file";
  ASSERT_EQ(Objects().GetObjects().size(), 5u);
  const auto pullOf = [](GameObject& object) {
    return static_cast<GravityGenerator&>(*BodyOf(object).generators.at(0)).gravity.y;
  };
  EXPECT_EQ(pullOf(*created[2]), -1.0f);
  EXPECT_EQ(pullOf(*Objects().GetObjects()[3]), -5.0f);
}

TEST_F(LevelTest, ALevelThatLoadsItselfStopsAtTheDepthLimit) {
  AddHook(world.Add("nest")).level = "self";
  Objects().SaveLevel("self");
  world.Restart();
  EXPECT_EQ(Objects().LoadLevel("self").size(), 1u);
  EXPECT_EQ(Objects().GetObjects().size(), static_cast<std::size_t>(ObjectManager::kMaxLoadDepth));
  EXPECT_EQ(Count(world.text(), "\n"), 1);
  EXPECT_EQ(Objects().LoadLevel("self").size(), 1u) << "the depth is counted down again";
}

// Each load by itself would be small; what one file can cost is bounded for all that it brings together.
TEST_F(LevelTest, LevelsThatMultiplyEachOtherAreBoundedTogether) {
  GameObject& nest = world.Add("nest");
  for (int i = 0; i < 12; ++i) AddHook(nest).level = "many";
  Objects().SaveLevel("many");
  const std::string whole = world.ReadFile("many");
  world.WriteFile("many", whole.substr(0, whole.rfind('}')));  // each load complains
  world.Restart();
  Objects().LoadLevel("many");
  EXPECT_LE(Objects().GetObjects().size(), std::size_t{ObjectManager::kMaxScripts});
  EXPECT_EQ(Count(world.text(), "more than 20000 scripts"), 1);
  EXPECT_EQ(Count(world.text(), "levels load each other"), 1);
  EXPECT_EQ(Count(world.text(), "the rest is not told"), 1);
  EXPECT_LE(Count(world.text(), "\n"), ObjectManager::kMaxMessages + 4) << "one for each bound";

  world.Restart();
  AddHook(world.Add("nest")).level = "large";
  Objects().SaveLevel("large");
  world.WriteFile("large", world.ReadFile("large") + std::string(ObjectManager::kMaxLoadBytes / 4, '\n'));
  world.Restart();
  Objects().LoadLevel("large");
  EXPECT_EQ(Objects().GetObjects().size(), 4u);
  EXPECT_EQ(Count(world.text(), "have more than 33554432 bytes"), 1);

  world.Restart();
  world.ClearText();
  std::string objects = kEmptyObject;
  for (int i = 0; i < 200; ++i) objects += "\tComponent: \"" + std::string(5000, 'x') + "\" {\n\t}\n";
  Objects().LoadText("wordy", Level(objects));
  EXPECT_EQ(Count(world.text(), "skipped"), 0) << "cut before";
  EXPECT_EQ(Count(world.text(), "\n"), ObjectManager::kMaxMessages + 1);
  EXPECT_LT(world.text().size(), 2 * PrintLimit::kMaxBytes * ObjectManager::kMaxMessages);
}

TEST_F(LevelTest, NothingIsReadFromOutsideOfTheFolder) {
  const std::string here = std::filesystem::current_path().string();
  std::filesystem::create_directories("examples/deeper");
  for (const char* name : {"examples/stage", "examples/deeper/stage", "stage"})
    world.WriteFile(name, Level(kEmptyObject));
  for (const std::string& name : {std::string("stage"), std::string("examples/stage")})
    EXPECT_EQ(Objects().LoadLevel(name).size(), 1u) << name;
  for (const std::string& name : {here + "/stage", std::string("examples/../stage"), std::string("./stage"),
                                  std::string("examples/deeper/stage"), std::string("autosaves/"), std::string("..")})
    EXPECT_TRUE(Objects().LoadLevel(name).empty()) << name;
  for (const char* name : {"", ".", "..", "a/b", "a\\b", "C:a", "a\nb", "a\x7f"})
    EXPECT_FALSE(IsPlainName(name)) << name;
  for (const char* name : {".hidden", "12:30 race", "Enter File Name Here", "caf\xc3\xa9"})
    EXPECT_TRUE(IsPlainName(name)) << name;
}

TEST_F(LevelTest, SavingSkipsCoreObjectsAndNamesTheNameless) {
  world.Add("kept core").core = true;
  world.Add("");
  Objects().SaveLevel();
  const std::string saved = world.ReadFile("TempSave");
  EXPECT_TRUE(saved.starts_with("{\n\t2: {\n\t\tName: Nameless\n\t\tCore: false\n"));
  EXPECT_EQ(Count(saved, "Name: "), 1);
}

TEST_F(LevelTest, WhatIsNotKnownIsSkippedAndTheRestLoads) {
  const std::string second =
      "\t2: {\n\t\tName: second\n\t\tCore: True\n\t\tComponent: \"Whale\" {\n\t\t\ta: 1\n"
      "\t\t\tComponent: \"Vec3\" {\n\t\t\t\tx_: 1\n\t\t\t}\n\t\t\tb: 2\n\t\t}\n"
      "\t\tComponent: \"SphereCollider\" {\n\t\t\tsize: 2\n\t\t\ttype: 0\n\t\t\trestitution: 1\n"
      "\t\t\tghost: true\n\t\t\tcollision group: 77\n\t\t\tradius: -2\n\t\t}\n\t}\n";
  const auto created = Objects().LoadText(
      "level", Level("\tComponent: \"Transform\" {\n\t\tx: 1\n\t}\n" + (kEmptyObject + second) + kEmptyObject));
  ASSERT_EQ(created.size(), 3u);
  EXPECT_FALSE(created[1]->core) << "only \"true\" is true here";
  const auto& sphere = *created[1]->Get<GalePhysics::SphereCollider>();
  EXPECT_EQ(sphere.GetColliderType(), GalePhysics::ColliderType::kSphere);
  EXPECT_EQ(sphere.collisionGroup, 77u) << "kept for the next save";
  EXPECT_EQ(sphere.radius, 0.0f);
  EXPECT_TRUE(sphere.ghost);
  for (const char* message : {"\"Transform\", skipped", "\"Whale\", skipped", "collider type 0", "collision group 77"})
    EXPECT_EQ(Count(world.text(), message), 1) << message;
  EXPECT_EQ(Count(world.text(), "\n"), 4);
}

TEST_F(LevelTest, TheObjectCountIsCapped) {
  std::string objects;
  for (std::size_t i = 0; i < ObjectManager::kMaxObjects + 5; ++i) objects += kEmptyObject;
  EXPECT_EQ(Objects().LoadText("crowd", Level(objects)).size(), ObjectManager::kMaxObjects);
  EXPECT_EQ(Count(world.text(), "\n"), 1);
  EXPECT_TRUE(Objects().LoadText("one", Level(kEmptyObject)).empty());
}

TEST_F(DamagedLevelTest, ACutAnywhereEndsWithItsLineNumber) {
  const std::string whole = SaveScene();
  world.Restart();
  const std::size_t last = whole.rfind('}');
  for (std::size_t size = 1; size <= whole.size(); ++size) {
    const std::string cut = whole.substr(0, size);
    world.ClearText();
    LoadAndRun(cut);
    const int lines = Count(cut, "\n") + (cut.back() == '\n' ? 0 : 1);
    const std::string message = "damaged: line " + std::to_string(lines) + ": unexpected end\n";
    ASSERT_EQ(Count(world.text(), message), size > last ? 0 : 1) << "cut after " << size << " bytes: " << world.text();
    world.Restart();
  }
}

TEST_F(DamagedLevelTest, RandomDamageNeverHurts) {
  const std::string whole = SaveScene();
  std::vector<std::string> lines;
  std::istringstream stream(whole);
  for (std::string line; std::getline(stream, line);) lines.push_back(line + '\n');
  world.Restart();
  std::mt19937 random(1);
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random()) % limit; };
  for (int round = 0; round < 600; ++round) {
    std::string text = whole;
    if (round % 3 == 0) {  // noise
      for (std::size_t i = 0; i < 30; ++i) text[below(text.size())] = static_cast<char>(below(256));
    } else if (round % 3 == 1) {  // lines in any order
      text = "{\n";
      for (std::size_t i = 0; i < 200; ++i) text += lines[below(lines.size())];
    } else {  // stretches moved about, and digits changed
      const std::size_t from = below(text.size() - 500);
      text.insert(below(text.size()), text.substr(from, below(500)));
      for (char& c : text)
        if (c >= '0' && c <= '9' && below(8) == 0) c = "0123456789eE-.n{}:"[below(18)];
    }
    SCOPED_TRACE(round);
    LoadAndRun(text);
    std::filesystem::remove("resaved");
    ASSERT_TRUE(Objects().SaveLevel("resaved"));
    world.Restart();
    Objects().LoadLevel("resaved");
    world.Restart();
  }
}

// A count must not be checked by walking the rest of the file: this would then run for minutes, into CTest's limit.
TEST_F(DamagedLevelTest, ManyCountsInTheLargestFileDoNotHang) {
  std::string body = "Component: \"RigidBody\" {\n";
  for (int i = 0; i < 50; ++i) body += "a\n";
  body += "a: 9\n}\n";
  std::string text = "{\n1: {\nName: a\nCore: false\n";
  while (text.size() < 15u * 1024 * 1024) text += body;
  EXPECT_EQ(Objects().LoadText("large", text).size(), 1u);
}

}  // namespace
