#include <algorithm>
#include <cmath>

#include "script_test.h"
#include "scripts/spawner.h"
#include "scripts/spawns_objects.h"

namespace {

class SpawnTest : public ScriptTest {
 public:
  SpawnTest() {
    GameObject& pattern = world.AddSphere("fish", {}, {.damping = 0.9985f, .group = 0});
    world.WriteFile("fish", Document({&pattern}));
    pattern.alive = false;
    PositionOf(holder) = {21.0f, 1.0f, -0.2f};
    holder.Insert(std::make_unique<Sprite>());
    spawner.archetypeName = "fish";
    spawner.spawnVelocity = {-1.5f, 0.0f, 0.0f};
    spawner.spawnRate = 1.0f;
  }
  static std::vector<GameObject*> Fish() { return FindAll("fish"); }

  SpawnsObjects& spawner = Carry<SpawnsObjects>();
};

}  // namespace

// Intervals are real seconds, of 58.8 frames; what swims to the left looks there.
TEST_F(SpawnTest, SendsCopiesOffAtItsRate) {
  spawner.timeBeforeFirstSpawn = 1.0f;
  Run(58);
  EXPECT_TRUE(Fish().empty());
  EXPECT_FALSE(holder.Get<Sprite>()->visible);
  Run(1);
  ASSERT_EQ(Fish().size(), 1u);
  GameObject& fish = *Fish()[0];
  const float damping = std::sqrt(0.9985f);
  EXPECT_FLOAT_EQ(BodyOf(fish).damping, damping);
  EXPECT_NEAR(BodyOf(fish).velocity.x, -1.5f * std::pow(damping, 15.0f), 1e-4f);
  EXPECT_EQ(fish.GetTransform().graphicsScale.x, -1.0f);
  EXPECT_EQ(PositionOf(fish).y, 1.0f) << "a range of no height";
  EXPECT_EQ(PositionOf(fish).z, -0.2f);
  spawner.yRange = 6.0f;
  Run(60 * 59);
  const auto all = Fish();
  ASSERT_NEAR(static_cast<double>(all.size()), 61.0, 1.0);
  const auto [lowest, highest] = std::minmax_element(
      all.begin(), all.end(), [](GameObject* a, GameObject* b) { return PositionOf(*a).y < PositionOf(*b).y; });
  EXPECT_GE(PositionOf(**lowest).y, 1.0f - 6.0f);
  EXPECT_LE(PositionOf(**highest).y, 1.0f + 6.0f);
  EXPECT_GT(PositionOf(**highest).y - PositionOf(**lowest).y, 8.0f) << "spread over the range";
  spawner.spawnVelocity = {1.0f, 0.0f, 0.0f};
  Run(60);
  EXPECT_EQ(Fish().back()->GetTransform().graphicsScale.x, 1.0f);
}

TEST_F(SpawnTest, AMissingArchetypeWaitsForTheNextTurn) {
  spawner.archetypeName = "kraken";
  Run(130);
  EXPECT_EQ(Count(world.text(), "the archetype \"kraken\" makes no object"), 3);
  spawner.archetypeName = "fish";
  spawner.spawnRate = 0.0f;
  Run(100);
  EXPECT_GE(Fish().size(), 40u) << "no rate: one a frame";
}

// The bench throws for ever, and what it throws is gone after three seconds.
TEST_F(ScriptTest, TheBenchThrowsWithoutEndAndWithoutPilingUp) {
  Carry<Spawner>();
  Run(400);
  EXPECT_GE(CountObjects("thrown"), 13);
  Run(800);
  EXPECT_LE(CountObjects("thrown"), 15 * 3);
}
