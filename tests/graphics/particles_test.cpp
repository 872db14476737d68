#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "core/world_fixture.h"
#include "graphics/basic_particle_emitter.h"

namespace {

constexpr float kStep = 0.0085f;

BasicParticleEmitter& AddEmitter(GameObject& object) {
  auto& box = object.Insert(std::make_unique<ScriptBox>());
  return static_cast<BasicParticleEmitter&>(box.AddScript(std::make_unique<BasicParticleEmitter>()));
}

class EmitterTest : public WorldFixture {
 protected:
  /// All ranges as points, a particle in every update.
  void MakeSteady() {
    for (Vec3* v : {&emitter.startingPositionMin, &emitter.startingPositionMax, &emitter.minVelocity,
                    &emitter.maxVelocity, &emitter.minAcceleration, &emitter.maxAcceleration})
      *v = {};
    emitter.spawnIntervalMin = emitter.spawnIntervalMax = 0.0f;
  }
  void Age(int updates) {
    for (int i = 0; i < updates; ++i) object.Update(kStep);
  }

  GameObject& object = world.Add("bubbles");
  BasicParticleEmitter& emitter = AddEmitter(object);
};

// The numbers that the generator gives next, as fractions of its range.
std::vector<float> NextFractions(int count) {
  const std::uint32_t state = RandomState();
  std::vector<float> fractions;
  for (int i = 0; i < count; ++i) fractions.push_back(static_cast<float>(Random()) / static_cast<float>(kRandomMax));
  SeedRandom(state);
  return fractions;
}

}  // namespace

TEST_F(EmitterTest, ByDefaultOneComesEveryTwelveUpdatesAndLivesFor588) {
  Age(11);
  EXPECT_EQ(emitter.CountLive(), 0);
  Age(1);
  EXPECT_EQ(emitter.CountLive(), 1);
  Age(587);  // 588 steps of its life
  EXPECT_GT(emitter.GetPool()[0].life, 0.0f);
  EXPECT_EQ(emitter.CountLive(), 49);
  Age(1);
  EXPECT_LE(emitter.GetPool()[0].life, 0.0f);
  Age(24);
  EXPECT_NEAR(emitter.CountLive(), 49, 1);
}

// The order is part of the match's random stream; a range that is a point takes no number.
TEST_F(EmitterTest, DrawsPlaceLifeSizeMotionAndIntervalInThisOrder) {
  MakeSteady();
  PositionOf(object) = {1.0f, 2.0f, 3.0f};
  const std::uint32_t before = RandomState();
  Age(20);
  EXPECT_EQ(RandomState(), before);
  const int spawned = emitter.CountLive();
  emitter.startingPositionMax = {10.0f, 20.0f, 30.0f};
  emitter.maxLifeSpan = 7.0f;
  emitter.maxScale.x = 3.0f;
  emitter.maxVelocity = {1.0f, 2.0f, 3.0f};
  emitter.maxAcceleration.z = 1000.0f;
  emitter.spawnIntervalMax = 1.0f;
  const std::vector<float> next = NextFractions(10);
  Age(1);
  ASSERT_EQ(emitter.CountLive(), spawned + 1);
  const Particle& particle = emitter.GetPool()[static_cast<std::size_t>(spawned)];
  EXPECT_NEAR(particle.position.x, 1.0f + 10.0f * next[0] + next[5] * kStep, 1e-4f);
  EXPECT_NEAR(particle.position.y, 2.0f + 20.0f * next[1] + 2.0f * next[6] * kStep, 1e-4f);
  const float speed = 3.0f * next[7] + 1000.0f * next[8] * kStep;  // the velocity first, then the place
  EXPECT_NEAR(particle.position.z, 3.0f + 30.0f * next[2] + speed * kStep, 1e-4f);
  EXPECT_NEAR(particle.life, 5.0f + 2.0f * next[3] - kStep, 1e-4f);
  EXPECT_NEAR(particle.scale.x, 1.0f + 2.0f * next[4], 1e-4f);
  EXPECT_EQ(particle.scale.y, particle.scale.x);
  EXPECT_EQ(particle.scale.z, 1.0f);
  const int wait = static_cast<int>(next[9] / kStep);
  Age(wait);
  EXPECT_EQ(emitter.CountLive(), spawned + 1);
  Age(2);
  EXPECT_EQ(emitter.CountLive(), spawned + 2);
}

TEST_F(EmitterTest, AFullPoolLosesItsFirstAndAGoneOneIsReplaced) {
  MakeSteady();
  emitter.maxParticles = 10;
  Age(21);  // the eleventh update with a full pool's worth behind it
  ASSERT_EQ(emitter.GetPool().size(), 10u);
  EXPECT_EQ(emitter.CountLive(), 10);
  object.GetTransform().position.x = 5.0f;
  Age(1);
  EXPECT_EQ(emitter.GetPool()[0].position.x, 5.0f);
  EXPECT_EQ(emitter.GetPool()[9].position.x, 0.0f);
  for (const int size : {4, 0, 2}) {
    emitter.maxParticles = size;
    Age(3);
    EXPECT_EQ(emitter.CountLive(), size);
  }
}

TEST_F(EmitterTest, TakesItsTintAndFadesInItsLastSecondOrOverAShorterLife) {
  MakeSteady();
  emitter.spawnIntervalMin = emitter.spawnIntervalMax = 100.0f;
  emitter.minLifespan = emitter.maxLifeSpan = 1.005f;
  emitter.colour = {0.25f, 0.5f, 0.75f};
  Age(12);
  EXPECT_EQ(emitter.GetPool()[0].colour, (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
  Age(50);
  EXPECT_FLOAT_EQ(emitter.GetPool()[0].colour[3], emitter.GetPool()[0].life + kStep);
  EXPECT_LT(emitter.GetPool()[0].colour[3], 0.6f);
  emitter.minLifespan = emitter.maxLifeSpan = 2.0f * kStep;
  emitter.spawnTimer = 0.0f;
  Age(1);
  EXPECT_EQ(emitter.GetPool()[1].colour[3], 1.0f) << "what is new is solid";
  Age(1);
  EXPECT_FLOAT_EQ(emitter.GetPool()[1].colour[3], 0.5f);
}

// A number in a file must not decide how much memory is taken, neither alone nor many times over.
TEST_F(EmitterTest, CountsOutOfRangeAreToldAndMoved) {
  for (const int count : {-7, 2000000000}) {
    emitter.maxParticles = count;
    GameObject& loaded = *Objects().LoadText("emitter", Document({&object})).at(0);
    const auto& read = static_cast<BasicParticleEmitter&>(*loaded.Get<ScriptBox>()->GetScript("bpe"));
    EXPECT_EQ(read.maxParticles, count < 0 ? 0 : ParticleEmitter::kMaxParticles);
    EXPECT_EQ(Count(world.text(), "particleCount " + std::to_string(count) + ", must be 0 to 65536\n"), 1);
    loaded.Update(kStep);
    loaded.alive = false;
    Objects().RemoveDeadObjects();
  }
  std::size_t pooled = 0;
  for (int i = 0; i < 20; ++i) {
    GameObject& next = world.Add("many");
    BasicParticleEmitter& large = AddEmitter(next);
    large.maxParticles = ParticleEmitter::kMaxParticles;
    next.Update(kStep);
    pooled += large.GetPool().size();
  }
  EXPECT_EQ(pooled, static_cast<std::size_t>(ParticleEmitter::kMaxAllParticles));
  EXPECT_EQ(Count(world.text(), "bpe: 65536 particles are too many, 0 remain\n"), 4);
  world.Restart();
  EXPECT_TRUE(ParticleEmitters().empty());
  GameObject& after = world.Add("after");
  const BasicParticleEmitter& fresh = AddEmitter(after);
  after.Update(kStep);
  EXPECT_EQ(fresh.GetPool().size(), 100u) << "what went is free again";
}
