#include <gtest/gtest.h>

#include <cmath>

#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/episode_scene.h"
#include "scripts/death_timer.h"
#include "scripts/spawner.h"
#include "scripts/spawns_objects.h"

namespace {

class SpawnScene : public EpisodeScene {
 public:
  SpawnScene() {
    GameObject& pattern = world.AddSphere("fish", {}, {.damping = 0.9985f, .group = 0});
    world.WriteFile("fish", Document({&pattern}));
    pattern.alive = false;
    GameObject& holder = world.Add("spawner", {21.0f, 1.0f, -0.2f});
    holder.Insert(std::make_unique<Sprite>());
    spawner = static_cast<SpawnsObjects*>(
        &holder.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<SpawnsObjects>()));
    spawner->archetypeName = "fish";
    spawner->spawnVelocity = {-1.5f, 0.0f, 0.0f};
    spawner->spawnRate = 1.0f;
  }
  static std::vector<GameObject*> Fish() {
    std::vector<GameObject*> fish;
    for (const auto& object : Objects().GetObjects())
      if (object->alive && object->name == "fish") fish.push_back(object.get());
    return fish;
  }

  SpawnsObjects* spawner;
};

}  // namespace

// Intervals are real seconds, of 58.8 frames; what swims to the left looks there.
TEST(SpawnsObjects, SendsCopiesOffAtItsRate) {
  SpawnScene scene;
  scene.spawner->timeBeforeFirstSpawn = 1.0f;
  scene.spawner->yRange = 6.0f;
  scene.Run(58);
  EXPECT_TRUE(SpawnScene::Fish().empty());
  EXPECT_FALSE(scene.spawner->owner->Get<Sprite>()->visible);
  scene.Run(1);
  ASSERT_EQ(SpawnScene::Fish().size(), 1u);
  GameObject& fish = *SpawnScene::Fish()[0];
  const float damping = std::sqrt(0.9985f);
  EXPECT_FLOAT_EQ(BodyOf(fish).damping, damping);
  EXPECT_EQ(fish.GetTransform().graphicsScale.x, -1.0f);
  EXPECT_EQ(PositionOf(fish).z, -0.2f);
  scene.Run(60 * 59);
  const auto all = SpawnScene::Fish();
  ASSERT_NEAR(static_cast<double>(all.size()), 61.0, 1.0);
  float lowest = 100.0f;
  float highest = -100.0f;
  for (GameObject* one : all) {
    lowest = std::min(lowest, PositionOf(*one).y);
    highest = std::max(highest, PositionOf(*one).y);
  }
  EXPECT_GE(lowest, 1.0f - 6.0f);
  EXPECT_LE(highest, 1.0f + 6.0f);
  EXPECT_GT(highest - lowest, 8.0f) << "spread over the range";
}

TEST(SpawnsObjects, WithoutDampingItKeepsItsSpeedAndWithoutRangeItsRow) {
  SpawnScene scene;
  scene.world.WriteFile("crab", Document({&scene.world.AddSphere("fish", {}, {.damping = 1.0f})}));
  SpawnScene::Fish()[0]->alive = false;
  scene.spawner->archetypeName = "crab";
  scene.Run(1);
  GameObject& crab = *SpawnScene::Fish().at(0);
  EXPECT_EQ(PositionOf(crab).y, 1.0f);
  const float x = PositionOf(crab).x;
  scene.Run(100);
  EXPECT_NEAR(PositionOf(crab).x, x - 100 * 0.06375f, 1e-3f);
  scene.spawner->spawnVelocity = {1.0f, 0.0f, 0.0f};
  scene.Run(20);
  EXPECT_EQ(SpawnScene::Fish().back()->GetTransform().graphicsScale.x, 1.0f);
}

TEST(SpawnsObjects, AMissingArchetypeWaitsForTheNextTurn) {
  SpawnScene scene;
  scene.spawner->archetypeName = "kraken";
  scene.Run(130);
  EXPECT_EQ(Count(scene.world.text(), "the archetype \"kraken\" makes no object"), 3);
  scene.spawner->archetypeName = "fish";
  scene.spawner->spawnRate = 0.0f;
  scene.Run(100);
  EXPECT_GE(SpawnScene::Fish().size(), 40u) << "no rate: one a frame";
}

TEST(DeathTimer, EndsItsOwnerInItsTime) {
  EpisodeScene scene;
  const auto add = [&](std::unique_ptr<DeathTimer> timer) {
    GameObject& object = scene.world.Add("mortal");
    object.Insert(std::make_unique<ScriptBox>()).AddScript(std::move(timer));
    return object.id;
  };
  const auto byName = add(std::make_unique<DeathTimer>());
  const auto shortly = add(std::make_unique<DeathTimer>(1.0f));
  EXPECT_EQ(FindDeathTimer(*Objects().GetObject(byName))->endTime, 3.0f);
  scene.Run(117);
  EXPECT_NE(Objects().GetObject(shortly), nullptr);
  scene.Run(1);
  EXPECT_EQ(Objects().GetObject(shortly), nullptr);
  scene.Run(237);
  EXPECT_EQ(Objects().GetObject(byName), nullptr);
}

// The bench throws for ever, and what it throws is gone after three seconds.
TEST(Spawner, ThrowsWithoutEndAndWithoutPilingUp) {
  EpisodeScene scene;
  scene.world.Add("bench").Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<Spawner>());
  scene.Run(400);
  const int thrown = EpisodeScene::CountObjects("thrown");
  EXPECT_GE(thrown, 13);
  scene.Run(800);
  EXPECT_LE(EpisodeScene::CountObjects("thrown"), 15 * 3);
}
