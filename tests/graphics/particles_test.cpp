#include <gtest/gtest.h>

#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/basic_particle_emitter.h"
#include "test_world.h"

namespace {

constexpr float kStep = 0.0085f;

BasicParticleEmitter& AddEmitter(GameObject& object) {
  auto& box = object.Insert(std::make_unique<ScriptBox>());
  return static_cast<BasicParticleEmitter&>(box.AddScript(std::make_unique<BasicParticleEmitter>()));
}

void Age(GameObject& object, int updates) {
  for (int i = 0; i < updates; ++i) object.Update(kStep);
}

// All ranges as points, a particle in every update.
void MakeSteady(BasicParticleEmitter& emitter) {
  for (Vec3* v : {&emitter.startingPositionMin, &emitter.startingPositionMax, &emitter.minVelocity,
                  &emitter.maxVelocity, &emitter.minAcceleration, &emitter.maxAcceleration})
    *v = {};
  emitter.spawnIntervalMin = emitter.spawnIntervalMax = 0.0f;
}

// The numbers that the generator gives next, as fractions of its range.
std::vector<float> NextFractions(int count) {
  const std::uint32_t state = RandomState();
  std::vector<float> fractions;
  for (int i = 0; i < count; ++i) fractions.push_back(static_cast<float>(Random()) / static_cast<float>(kRandomMax));
  SeedRandom(state);
  return fractions;
}

}  // namespace

TEST(BasicParticleEmitter, ByDefaultOneComesEveryTwelveUpdatesAndLivesFor588) {
  TestWorld world;
  GameObject& object = world.Add("bubbles");
  const BasicParticleEmitter& emitter = AddEmitter(object);
  Age(object, 11);
  EXPECT_EQ(emitter.CountLive(), 0);
  Age(object, 1);
  EXPECT_EQ(emitter.CountLive(), 1);
  Age(object, 587);  // 588 steps of its life
  EXPECT_GT(emitter.GetPool()[0].life, 0.0f);
  EXPECT_EQ(emitter.CountLive(), 49);
  Age(object, 1);
  EXPECT_LE(emitter.GetPool()[0].life, 0.0f);
  for (int i = 0; i < 24; ++i) {
    EXPECT_GE(emitter.CountLive(), 49);
    EXPECT_LE(emitter.CountLive(), 50);
    Age(object, 1);
  }
}

// The order is part of the match's random stream; a range that is a point takes no number.
TEST(BasicParticleEmitter, DrawsPlaceLifeSizeMotionAndIntervalInThisOrder) {
  TestWorld world;
  GameObject& object = world.Add("bubbles", {1.0f, 2.0f, 3.0f});
  BasicParticleEmitter& emitter = AddEmitter(object);
  MakeSteady(emitter);
  const std::uint32_t before = RandomState();
  Age(object, 20);
  EXPECT_EQ(RandomState(), before);
  const int spawned = emitter.CountLive();
  emitter.startingPositionMax = {10.0f, 20.0f, 30.0f};
  emitter.maxLifeSpan = 7.0f;
  emitter.maxScale.x = 3.0f;
  emitter.maxVelocity = {1.0f, 2.0f, 3.0f};
  emitter.maxAcceleration.z = 1000.0f;
  emitter.spawnIntervalMax = 1.0f;
  const std::vector<float> next = NextFractions(10);
  Age(object, 1);
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
  Age(object, wait);
  EXPECT_EQ(emitter.CountLive(), spawned + 1);
  Age(object, 2);
  EXPECT_EQ(emitter.CountLive(), spawned + 2);
}

TEST(BasicParticleEmitter, AFullPoolLosesItsFirstAndAGoneOneIsReplaced) {
  TestWorld world;
  GameObject& object = world.Add("bubbles");
  BasicParticleEmitter& emitter = AddEmitter(object);
  MakeSteady(emitter);
  emitter.maxParticles = 10;
  Age(object, 21);  // the eleventh update with a full pool's worth behind it
  ASSERT_EQ(emitter.GetPool().size(), 10u);
  EXPECT_EQ(emitter.CountLive(), 10);
  object.GetTransform().position.x = 5.0f;
  Age(object, 1);
  EXPECT_EQ(emitter.GetPool()[0].position.x, 5.0f);
  EXPECT_EQ(emitter.GetPool()[9].position.x, 0.0f);
  emitter.maxParticles = 4;
  Age(object, 3);
  EXPECT_EQ(emitter.CountLive(), 4);
  emitter.maxParticles = 0;
  Age(object, 3);
  EXPECT_EQ(emitter.CountLive(), 0);
  emitter.maxParticles = 2;
  Age(object, 3);
  EXPECT_EQ(emitter.CountLive(), 2);
}

TEST(BasicParticleEmitter, TakesItsTintAndFadesByAStepInItsLastSecond) {
  TestWorld world;
  GameObject& object = world.Add("bubbles");
  BasicParticleEmitter& emitter = AddEmitter(object);
  MakeSteady(emitter);
  emitter.spawnIntervalMin = emitter.spawnIntervalMax = 100.0f;
  emitter.minLifespan = emitter.maxLifeSpan = 1.005f;
  emitter.colour = {0.25f, 0.5f, 0.75f};
  Age(object, 12);
  EXPECT_EQ(emitter.GetPool()[0].colour, (std::array<float, 4>{0.25f, 0.5f, 0.75f, 1.0f}));
  Age(object, 50);
  EXPECT_FLOAT_EQ(emitter.GetPool()[0].colour[3], 1.0f - kStep);
}

TEST(BasicParticleEmitter, KeepsItsValuesInTheirOrder) {
  TestWorld world;
  GameObject& object = world.Add("bubbles");
  BasicParticleEmitter& emitter = AddEmitter(object);
  emitter.textureName = "Bubble.png";
  emitter.maxParticles = 7;
  emitter.minLifespan = 0.5f;
  emitter.maxLifeSpan = 0.25f;
  float next = 1.0f;
  for (Vec3* v :
       {&emitter.startingPositionMin, &emitter.startingPositionMax, &emitter.minVelocity, &emitter.maxVelocity,
        &emitter.minAcceleration, &emitter.maxAcceleration, &emitter.minScale, &emitter.maxScale})
    for (float* f : {&v->x, &v->y, &v->z}) *f = next++;
  emitter.spawnIntervalMin = 0.75f;
  emitter.spawnIntervalMax = 1.25f;
  const std::string text = Document({&object});
  const std::size_t start = text.find("\"bpe\"");
  ASSERT_NE(start, std::string::npos);
  std::string values;
  for (std::size_t i = text.find('\n', start) + 1; text[i] != '}'; ++i)
    if (text[i] != '\t') values += text[i];
  EXPECT_EQ(values,
            "textureName: Bubble.png\nparticleCount: 7\nminLifespan: 0.5\nmaxLifeSpan: 0.25\n"
            "x: 1\ny: 2\nz: 3\nx: 4\ny: 5\nz: 6\nx: 7\ny: 8\nz: 9\nx: 10\ny: 11\nz: 12\n"
            "x: 13\ny: 14\nz: 15\nx: 16\ny: 17\nz: 18\nx: 19\ny: 20\nz: 21\nx: 22\ny: 23\nz: 24\n"
            "spawnIntervalMin: 0.75\nspawnIntervalMax: 1.25\n");
  world.WriteFile("kept", text);
  EXPECT_EQ(WithoutIds(Document(Objects().LoadLevel("kept"))), WithoutIds(text));
}

// A number in a file must not decide how much memory is taken, neither alone nor many times over.
TEST(ParticleEmitter, CountsOutOfRangeAreToldAndMoved) {
  TestWorld world;
  std::vector<GameObject*> objects;
  const auto load = [&](int count) {
    GameObject& object = world.Add("bubbles");
    AddEmitter(object).maxParticles = count;
    const std::string name = std::to_string(count);
    world.WriteFile(name, Document({&object}));
    object.alive = false;
    world.ClearText();
    objects = Objects().LoadLevel(name);
    return static_cast<BasicParticleEmitter*>(objects.at(0)->Get<ScriptBox>()->GetScript("bpe"));
  };
  EXPECT_EQ(load(-7)->maxParticles, 0);
  Age(*objects[0], 30);
  EXPECT_NE(world.text().find("particleCount -7, must be 0 to 65536\n"), std::string::npos) << world.text();
  EXPECT_EQ(load(2000000000)->maxParticles, ParticleEmitter::kMaxParticles);
  EXPECT_NE(world.text().find("particleCount 2000000000, must be 0 to 65536\n"), std::string::npos);
  int pooled = 0;
  for (int i = 0; i < 20; ++i) {
    GameObject& object = world.Add("many");
    BasicParticleEmitter& emitter = AddEmitter(object);
    emitter.maxParticles = ParticleEmitter::kMaxParticles;
    Age(object, 1);
    pooled += static_cast<int>(emitter.GetPool().size());
  }
  EXPECT_EQ(pooled, ParticleEmitter::kMaxAllParticles);
  EXPECT_EQ(Count(world.text(), "bpe: 65536 particles are too many, 0 remain\n"), 4);
  world.Restart();
  EXPECT_TRUE(ParticleEmitters().empty());
  GameObject& object = world.Add("after");
  BasicParticleEmitter& emitter = AddEmitter(object);
  Age(object, 1);
  EXPECT_EQ(emitter.GetPool().size(), 100u);
}
