#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "core/game_time.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/episode_scene.h"
#include "match/give_points.h"
#include "physics/sphere_collider.h"
#include "scripts/broad_side.h"
#include "scripts/fountain.h"
#include "scripts/one_way_into_stage.h"
#include "scripts/prison_script.h"
#include "scripts/squishy.h"
#include "scripts/vortex.h"

namespace {

constexpr float kStep = 0.0085f;

// One object that carries the hazard, and the shipped archetypes that hazards make.
template <class T>
class HazardScene : public EpisodeScene {
 public:
  explicit HazardScene(const Vec3& place = {})
      : holder(world.AddSphere("hazard", place, {.inverseMass = 0.0f, .group = 0})) {
    for (const char* name : {"cannonball", "sandpoof"})
      std::filesystem::copy_file(std::filesystem::path(BRINEWHIRL_GAME_DIR) / name, name);
    script = static_cast<T*>(&holder.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<T>()));
  }
  // Objects of that name which were not there at the last call.
  std::vector<GameObject*> NewOnes(std::string_view name) {
    std::vector<GameObject*> found;
    for (const auto& object : Objects().GetObjects())
      if (object->name == name && known_.insert(object->id).second) found.push_back(object.get());
    return found;
  }
  void Touch(GameObject& other) {
    GalePhysics::Contact contact;
    contact.point = {1.0f, 2.0f, 0.0f};
    contact.first = &BodyOf(holder);
    contact.second = &BodyOf(other);
    contact.firstOwner = &holder;
    contact.secondOwner = &other;
    holder.OnContact(contact);
  }

  GameObject& holder;  // meets no cannonball, as nothing does that fires them
  T* script = nullptr;

 private:
  std::set<std::uint32_t> known_;
};

struct SandScene : HazardScene<Squishy> {
  SandScene() { holder.Get<ScriptBox>()->AddScript("sandlogic"); }
};

}  // namespace

// The first volley leaves to the left, as the sides' flag has it; gaps between volleys are not counted from their
// shots.
TEST(BroadSide, FiresThreeGunsAVolleyFromEitherSideInTurn) {
  BroadSide::ResetSide();
  HazardScene<BroadSide> scene;
  std::vector<int> starts;
  std::vector<Vec3> places;
  while (scene.frame < 2500 && places.size() < 12) {
    scene.Run(1);
    for (GameObject* ball : scene.NewOnes("cannonball")) {
      if (places.size() % 3 == 0) starts.push_back(scene.frame);
      places.push_back(PositionOf(*ball));
    }
  }
  ASSERT_EQ(places.size(), 12u);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const float side = i / 3 % 2 == 0 ? -1.0f : 1.0f;
    const float slot[] = {0.0f, 3.0f, -3.0f};
    EXPECT_NEAR(places[i].x, side * 1.5425f, 1e-3f) << i;
    EXPECT_NEAR(places[i].y, side * slot[i % 3], 1e-3f) << i;
  }
  for (std::size_t i = 1; i < starts.size(); ++i) EXPECT_GE(starts[i] - starts[i - 1], 353);
  EXPECT_LE(starts[0], 2) << "a new ship has been ready for three seconds";
}

TEST(BroadSide, WithoutTheArchetypeItOnlySaysSo) {
  HazardScene<BroadSide> scene;
  std::filesystem::remove("cannonball");
  scene.Run(2);
  EXPECT_TRUE(scene.NewOnes("cannonball").empty());
  EXPECT_GT(Count(scene.world.text(), "CAN'T FIND YO LEVEL"), 0);
}

// What a new game has marked dead is updated once more, beside what the new game made.
TEST(BroadSide, ADeadShipFiresNoMoreThanADeadFountain) {
  HazardScene<BroadSide> scene;
  auto& fountain = static_cast<Fountain&>(scene.holder.Get<ScriptBox>()->AddScript(std::make_unique<Fountain>()));
  TurnFountainsOn();
  fountain.Update(kStep);
  scene.holder.alive = false;
  Time().elapsedTime += 1.0f;
  scene.holder.Update(kStep);
  EXPECT_TRUE(scene.NewOnes("cannonball").empty());
}

TEST(Fountain, EruptsUpwardsForItsBurstWhenTriggeredAndTurnedOn) {
  HazardScene<Fountain> scene({2.0f, -3.0f, 0.0f});
  scene.Run(60);
  EXPECT_TRUE(scene.NewOnes("cannonball").empty()) << "nobody has turned it on";
  TurnFountainsOn();
  std::size_t shots = 0;
  for (int i = 0; i < 178; ++i) {
    scene.Run(1);
    for (GameObject* ball : scene.NewOnes("cannonball")) {
      const Vec3& velocity = BodyOf(*ball).velocity;
      EXPECT_NEAR(Length(velocity), 3.0f, 1e-4f);
      EXPECT_GE(velocity.y, 3.0f * std::sin(kPi / 3.0f) - 1e-4f);
      const Vec3 muzzle = PositionOf(*ball) - velocity * (5.0f * kStep);
      EXPECT_NEAR(Length(muzzle - Vec3{2.0f, -3.0f, 0.0f}), 0.1f, 1e-3f);
      ++shots;
    }
  }
  EXPECT_GT(shots, 9u);
  EXPECT_EQ(static_cast<std::size_t>(scene.FramesOf("sound 18").size()), shots);
  scene.Run(100);
  EXPECT_TRUE(scene.NewOnes("cannonball").empty()) << "the burst is over";
  scene.script->Trigger();
  scene.Run(30);
  EXPECT_FALSE(scene.NewOnes("cannonball").empty());
  Fountain another;
  scene.Run(30);
  EXPECT_TRUE(scene.NewOnes("cannonball").empty()) << "making one turns all off";
}

// A freeze of the game's clock may begin while the thing is out of shape: it must not drift away for good.
TEST(Squishy, BulgesOnceAndComesBackEvenThroughAFreeze) {
  HazardScene<Squishy> scene;
  Vec3& scale = scene.holder.GetTransform().graphicsScale;
  scale = {2.0f, 3.0f, 0.0f};
  scene.Touch(scene.holder);
  scene.Run(18);
  EXPECT_NEAR(scale.x, 2.18f, 1e-4f);
  EXPECT_NEAR(scale.y, 2.82f, 1e-4f);
  scene.Touch(scene.holder);  // too early
  for (int i = 0; i < 147; ++i) scene.script->Update(0.0f);
  EXPECT_NEAR(scale.x, 2.18f, 1e-4f);
  scene.Run(60);
  EXPECT_NEAR(scale.x, 2.0f, 1e-4f);
  EXPECT_NEAR(scale.y, 3.0f, 1e-4f);
  EXPECT_EQ(scene.script->savedScale, (Vec3{2.0f, 3.0f, 0.0f}));
}

// A point distance of 0: whoever overlaps it is drawn to it, and that is all.
TEST(Vortex, AWhirlpoolGrowsAndOnlyPulls) {
  HazardScene<Vortex> scene;
  scene.script->pointDistance = 0.0f;
  scene.script->pullingConstant = 0.004f;
  GameObject& player = scene.world.AddSphere("Player1", {0.0f, 0.5f, 0.0f});
  scene.holder.OnCollision({&scene.holder, &player});
  EXPECT_EQ(BodyOf(player).forceTotal, (Vec3{0.0f, -0.004f, 0.0f}));
  EXPECT_EQ(player.GetTransform().graphicsScale, (Vec3{1.0f, 1.0f, 1.0f}));
  PositionOf(player) = {};
  scene.holder.OnCollision({&scene.holder, &player});
  EXPECT_FALSE(player.Get<GalePhysics::SphereCollider>()->ghost);
  PositionOf(player) = {0.0f, 9.0f, 0.0f};
  for (int i = 0; i < 200; ++i) scene.script->Update(0.01f);
  const auto* sphere = scene.holder.Get<GalePhysics::SphereCollider>();
  EXPECT_NEAR(sphere->radius, 2.0f, 1e-4f);
  EXPECT_EQ(sphere->broadPhaseSize, sphere->radius);
  EXPECT_NEAR(scene.holder.GetTransform().graphicsScale.x, 2.0f, 1e-4f);
}

TEST(Vortex, AnExitSwallowsPlayersAndPrizesAndAWayInBringsPlayersBack) {
  HazardScene<Vortex> scene;
  GameObject& prize = scene.world.AddSphere("crate", {});
  prize.Insert(std::make_unique<GivePoints>());
  GameObject& thing = scene.world.AddSphere("thing", {});
  for (GameObject* object : {&prize, &thing}) scene.holder.OnCollision({&scene.holder, object});
  EXPECT_FALSE(prize.alive);
  EXPECT_TRUE(thing.alive);

  std::vector<GameObject*> players;
  for (const char* name : {"Player1", "Player2", "Player3", "Player4"})
    players.push_back(&scene.world.AddSphere(name, {0.2f, 0.0f, 0.0f}));
  const auto draw = [&](GameObject& player, int overlaps) {
    for (int i = 0; i < overlaps; ++i) scene.holder.OnCollision({&scene.holder, &player});
  };
  for (GameObject* player : players) {
    EXPECT_TRUE(scene.holder.alive) << "until the last one is gone";
    draw(*player, 1300);
    EXPECT_LT(Length(player->GetTransform().graphicsScale), 0.0032f);
    EXPECT_TRUE(player->Get<GalePhysics::SphereCollider>()->ghost);
  }
  EXPECT_FALSE(scene.holder.alive);

  scene.holder.alive = true;
  auto& wayIn = static_cast<Vortex&>(scene.holder.Get<ScriptBox>()->AddScript(std::make_unique<Vortex>()));
  wayIn.isExit = false;
  BodyOf(*players[2]).forceTotal = {};
  wayIn.OnCollision({&scene.holder, players[2]});
  EXPECT_EQ(PositionOf(*players[2]), (Vec3{-1.5f, 0.0f, 0.0f}));
  EXPECT_FLOAT_EQ(players[2]->GetTransform().graphicsScale.x, 0.01001f);
  EXPECT_EQ(BodyOf(*players[2]).forceTotal, (Vec3{0.001f, 0.0f, 0.0f})) << "pushed out of the middle";
  for (int i = 0; i < 4700; ++i) wayIn.OnCollision({&scene.holder, players[2]});
  EXPECT_FALSE(players[2]->Get<GalePhysics::SphereCollider>()->ghost);
  EXPECT_NEAR(players[2]->GetTransform().graphicsScale.x, 1.0f, 0.1f);
}

TEST(OneWayIntoStage, ComesInThroughWallsAndIsItselfInside) {
  HazardScene<OneWayIntoStage> scene({20.0f, 0.0f, 0.0f});
  auto& body = BodyOf(scene.holder);
  const auto* collider = scene.holder.Get<GalePhysics::SphereCollider>();
  body.inverseMass = 0.5f;
  for (const float x : {20.0f, 14.01f, 13.99f, -13.99f, -14.01f, 0.0f}) {
    PositionOf(scene.holder).x = x;
    for (int i = 0; i < 3; ++i) scene.script->Update(kStep);
    const bool inside = std::abs(x) < 14.0f;
    EXPECT_EQ(collider->collisionGroup, inside ? 1u : 0u) << x;
    EXPECT_EQ(body.inverseMass, inside ? 0.5f : 0.0f) << x;
  }
}

TEST(PrisonScript, PutsWhatGotOutBackInTheMiddle) {
  HazardScene<PrisonScript> scene;
  struct Case {
    const char* name;
    Vec3 place;
    Vec3 due;
  };
  const Case cases[] = {
      {"Player1", {16.5f, 3.0f, 0.0f}, {-2.0f, 0.0f, 0.0f}}, {"Player2", {-16.1f, 0.0f, 0.0f}, {2.0f, 0.0f, 0.0f}},
      {"Player3", {0.0f, 11.1f, 0.0f}, {-4.0f, 0.0f, 0.0f}}, {"Player4", {0.0f, -11.1f, 0.0f}, {4.0f, 0.0f, 0.0f}},
      {"Player5", {99.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 0.0f}},  {"crate", {0.0f, 99.0f, 0.0f}, {0.0f, 0.0f, 0.0f}}};
  auto& body = BodyOf(scene.holder);
  for (const Case& tried : cases) {
    scene.holder.name = tried.name;
    PositionOf(scene.holder) = tried.place;
    body.velocity = {1.0f, 2.0f, 3.0f};
    scene.script->Update(kStep);
    EXPECT_EQ(PositionOf(scene.holder), tried.due) << tried.name;
    EXPECT_EQ(body.velocity, Vec3{}) << tried.name;
  }
  PositionOf(scene.holder) = {15.9f, -11.0f, 0.4f};
  body.velocity = {1.0f, 2.0f, 3.0f};
  scene.script->Update(kStep);
  EXPECT_EQ(PositionOf(scene.holder), (Vec3{15.9f, -11.0f, 0.0f}));
  EXPECT_EQ(body.velocity, (Vec3{1.0f, 2.0f, 3.0f}));
}

TEST(SandLogic, PuffsUnderFastPlayersOnly) {
  SandScene scene;
  GameObject& player = scene.world.AddSphere("Player3", {5.0f, 5.0f, 0.0f}, {.velocity = {1.9f, 0.0f, 0.0f}});
  scene.Touch(player);
  EXPECT_TRUE(scene.NewOnes("sandpoof").empty());
  BodyOf(player).velocity.x = 2.1f;
  scene.Touch(player);
  const auto puffs = scene.NewOnes("sandpoof");
  ASSERT_EQ(puffs.size(), 3u);
  EXPECT_EQ(PositionOf(*puffs[0]), (Vec3{1.0f, 2.0f, 0.0f}));
  EXPECT_EQ(scene.FramesOf("sound 38").size(), 1u);
  scene.Run(40);
  EXPECT_EQ(EpisodeScene::CountObjects("sandpoof"), 3);
  scene.Run(3);
  EXPECT_EQ(EpisodeScene::CountObjects("sandpoof"), 0);
}
