#include "core/object_manager.h"

#include "core/pause.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "core/world_fixture.h"

namespace {

std::vector<std::string> Names() {
  std::vector<std::string> names;
  for (const auto& object : Objects().GetObjects()) names.push_back(object->name);
  return names;
}

using List = std::vector<std::string>;
using ObjectManagerTest = WorldFixture;

TEST_F(ObjectManagerTest, FindsLivingObjectsByNameAndAllByTheirIdsWhichAreNeverReused) {
  EXPECT_EQ(Objects().GetObject(0), nullptr) << "cursor and camera have ID 0 but are in no table";
  auto& first = world.Add("twin");
  auto& second = world.Add("twin");
  world.Add("");
  EXPECT_EQ(Objects().FindObjectByName("twin"), &first);
  first.alive = false;
  EXPECT_EQ(Objects().FindObjectByName("twin"), &second) << "before any sweep";
  EXPECT_EQ(Objects().GetObject(1), &first);
  for (const char* name : {"twi", "Twin", ""}) EXPECT_EQ(Objects().FindObjectByName(name), nullptr) << name;
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Objects().GetObject(1), nullptr);
  EXPECT_EQ(world.Add("b").id, 4u);
  EXPECT_EQ(Objects().AddObject(std::make_unique<GameObject>()), 5u);
}

TEST_F(ObjectManagerTest, SortsByDepthOnlyWhenSomethingWasMadeAndKeepsEqualsInOrder) {
  world.Add("a", {0.0f, 0.0f, 1.0f});
  auto& b = world.Add("b");
  world.Add("c");
  world.Add("d", {0.0f, 0.0f, -1.0f});
  Objects().SortIfNeeded();
  EXPECT_EQ(Names(), (List{"d", "b", "c", "a"}));
  PositionOf(b).z = 2.0f;
  auto added = std::make_unique<GameObject>();
  added->name = "e";
  Objects().AddObject(std::move(added));
  Objects().SortIfNeeded();
  EXPECT_EQ(Names(), (List{"d", "b", "c", "a", "e"})) << "neither a new depth nor AddObject asks for an order";
  Objects().CreateObject();
  Objects().SortIfNeeded();
  EXPECT_EQ(Names(), (List{"d", "c", "e", "", "a", "b"}));
}

TEST_F(ObjectManagerTest, TheSweepSurvivesWhatDestructorsDo) {
  world.WriteFile("level", "{\n\t1: {\n\t\tName: loaded\n\t\tCore: false\n\t}\n}\n");
  auto& early = world.Add("early");
  auto& first = world.Add("first");
  auto& second = world.Add("second");
  auto& later = world.Add("later");
  world.Add("stays");
  int destroyed = 0;
  for (GameObject* dying : {&second, &later}) AddHook(*dying).onDestroy = [&] { ++destroyed; };
  AddHook(first).onDestroy = [&, id = first.id] {
    ++destroyed;
    EXPECT_EQ(Objects().GetObject(id), nullptr) << "out of the table before its scripts go";
    EXPECT_EQ(Objects().FindObjectByName("first"), nullptr);
    early.alive = false;  // passed already: goes next time
    later.alive = false;  // still ahead: goes in this sweep
    for (int i = 0; i < 100; ++i) world.Add("made");
    Objects().LoadLevel("level");
  };
  first.alive = second.alive = false;
  Objects().RemoveDeadObjects();
  EXPECT_EQ(destroyed, 3);
  List expected(103, "made");
  expected[0] = "early";
  expected[1] = "stays";
  expected[102] = "loaded";
  EXPECT_EQ(Names(), expected);
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Names()[0], "stays");
}

TEST_F(ObjectManagerTest, ASweepInsideASweepIsHarmless) {
  for (int i = 0; i < 3; ++i) {
    auto& object = world.Add("dies");
    object.alive = false;
    AddHook(object).onDestroy = [] { Objects().RemoveDeadObjects(); };
  }
  world.Add("stays");
  Objects().RemoveDeadObjects();
  EXPECT_EQ(Names(), List{"stays"});
}

TEST_F(ObjectManagerTest, AnObjectHoldsOneComponentPerKindAndItsTransformForGood) {
  auto& object = world.AddSphere("a", {});
  Transform* transform = &object.GetTransform();
  EXPECT_EQ(object.AddComponent("Transform"), transform);
  Component* old = object.GetComponent(Kind::kRigidBody);
  Component* made = object.AddComponent("RigidBody");
  EXPECT_NE(made, old);
  EXPECT_EQ(made->owner, &object);
  EXPECT_EQ(object.Get<GalePhysics::RigidBody>(), made);
  EXPECT_EQ(object.AddComponent("Whale"), nullptr);
}

TEST(Transform, TheMatrixIsACacheAndTheConstructorsAngleIsOneEulerStep) {
  Transform transform({1.0f, 2.0f, 3.0f}, {4.0f, 5.0f, 1.0f}, 0.5f);
  EXPECT_EQ(transform.orientation, (Quaternion{1.0f, 0.0f, 0.0f, 0.25f}));
  transform.orientation = {std::sqrt(0.5f), 0.0f, 0.0f, std::sqrt(0.5f)};
  transform.position = {7.0f, 8.0f, 9.0f};
  EXPECT_EQ(transform.GetModelMatrix()[3], 1.0f) << "until it is rebuilt";
  transform.Update(0.0f);
  transform.graphicsScale = {2.0f, 3.0f, 1.0f};
  const auto m = transform.GetModelMatrix();
  const float expected[16] = {0, -3, 0, 7, 2, 0, 0, 8, 0, 0, 1, 9, 0, 0, 0, 1};
  for (std::size_t i = 0; i < 16; ++i) EXPECT_NEAR(m[i], expected[i], 1e-6f) << i;
}

TEST(Pause, EveryHolderTakesItsOwnReasonAway) {
  struct : RunLogListener {
    std::string heard;
    void OnEvent(std::string_view text) override { (heard += text) += ';'; }
  } log;
  SetRunLogListener(&log);
  ReleasePause("never held");
  EXPECT_FALSE(IsPaused());
  for (const char* reason : {"focus", "focus", "pad"}) RequestPause(reason);
  for (const char* reason : {"focus", "pad", "other"}) ReleasePause(reason);
  EXPECT_TRUE(IsPaused()) << "held twice";
  ReleasePause("focus");
  EXPECT_FALSE(IsPaused());
  SetRunLogListener(nullptr);
  EXPECT_EQ(log.heard, "pause on;pause off;");
}

}  // namespace
