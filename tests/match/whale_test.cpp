#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "core/script_box.h"
#include "graphics/sprite.h"
#include "match/barnacle_logic.h"
#include "match/boss_health.h"
#include "match/episode_scene.h"
#include "match/give_points.h"
#include "match/objective_factory.h"
#include "match/scoring.h"
#include "physics/primitive_assemblage.h"
#include "physics/sphere_collider.h"
#include "scripts/make_a_whale.h"
#include "scripts/pirate_pathing.h"

namespace {

// Players, a barnacle that waits, and a whale when the test asks for it.
class WhaleScene : public EpisodeScene {
 public:
  WhaleScene()
      : barnacle(world.AddSphere("barnacle", {2.4f, 0.9f, 0.0f}, {.inverseMass = 0.0f, .radius = 0.5f, .group = 0})) {
    SetupMatch();
    Objects().RemoveDeadObjects();
    barnacle.Insert(std::make_unique<Sprite>());
    logic = static_cast<BarnacleLogic*>(barnacle.Insert(std::make_unique<ScriptBox>()).AddScript("barnaclelogic"));
    awarded_ = GetPointsAwarded();
  }
  void Hit(GameObject& self, int player, float speed) {
    GameObject& octopus = *GetPlayerObject(player);
    BodyOf(octopus).velocity = {speed, 0.0f, 0.0f};
    GalePhysics::Contact contact;
    contact.first = &BodyOf(self);
    contact.second = &BodyOf(octopus);
    contact.firstOwner = &self;
    contact.secondOwner = &octopus;
    self.OnContact(contact);
  }
  long long Awarded() const { return GetPointsAwarded() - awarded_; }
  bool IsBarnacleThere() const {
    return barnacle.Get<Sprite>()->visible && !barnacle.Get<GalePhysics::SphereCollider>()->ghost;
  }
  static BossHealth& HealthOf(const GameObject& whale) {
    return *static_cast<BossHealth*>(whale.Get<ScriptBox>()->GetScript("bosshealth"));
  }

  GameObject& barnacle;
  BarnacleLogic* logic = nullptr;

 private:
  long long awarded_ = 0;
};

constexpr float kFirstX = 26.0f - 4.0f * 0.0425f;  // after the frame of the placing

struct Pass {
  float side;  // sign of x where it began
  float row;
  std::set<float> speeds;
  float haltX = 0.0f;
  int shots = 0;
};

}  // namespace

TEST(MakeAWhale, ReplacesItsOwnerAndWhateverPaysByAWhale) {
  WhaleScene scene;
  GameObject& prize = scene.world.AddSphere("crate", {5.0f, 5.0f, 0.0f});
  prize.Insert(std::make_unique<GivePoints>());
  GameObject& kept = scene.world.AddSphere("core crate", {5.0f, -5.0f, 0.0f});
  kept.Insert(std::make_unique<GivePoints>());
  kept.core = true;
  GameObject& maker = scene.world.Add("maker");
  maker.Insert(std::make_unique<ScriptBox>()).AddScript("makeawhale");
  maker.Update(0.01f);
  EXPECT_FALSE(maker.alive || prize.alive);
  EXPECT_TRUE(kept.alive);
  const GameObject* whale = EpisodeScene::Find("whale");
  ASSERT_NE(whale, nullptr);
  const auto* hull = whale->Get<GalePhysics::PrimitiveAssemblage>();
  ASSERT_EQ(hull->boxes.size(), 2u);
  EXPECT_EQ(hull->boxes[0]->partOffset, (Vec3{0.0f, 3.1f, 0.0f}));
  EXPECT_EQ(hull->collisionGroup, 0u);
  EXPECT_FALSE(hull->ghost);
  EXPECT_EQ(BodyOf(const_cast<GameObject&>(*whale)).inverseMass, 0.0f);
}

// Three rows, each once straight through and once with a halt, before any comes again; the sides alternate. Every
// placing starts a burst of the fountain and every halt another.
TEST(PiratePathing, SwimsEveryPatternOnceARound) {
  WhaleScene scene;
  GameObject& whale = BuildWhale();
  std::vector<Pass> passes;
  std::size_t heard = 0;
  while (passes.size() < 13 && scene.frame < 9000) {
    scene.Run(1);
    const Vec3& p = PositionOf(whale);
    const float speed = BodyOf(whale).velocity.x;
    if (std::abs(speed) == 4.0f && std::abs(std::abs(p.x) - kFirstX) < 1e-3f) {
      passes.push_back({std::copysign(1.0f, p.x), p.y, {}});
      EXPECT_EQ(speed, -std::copysign(4.0f, p.x));
      EXPECT_EQ(whale.GetTransform().graphicsScale.x, -std::copysign(3.0f, p.x));
      EXPECT_NEAR(AngleAboutZ(whale.GetTransform().orientation), std::copysign(1.57f, p.x), 1e-5f);
    }
    if (std::abs(speed) < 1.0f) passes.back().haltX = p.x;
    for (; heard < scene.log.size(); ++heard) passes.back().shots += scene.log[heard].second == "sound 18" ? 1 : 0;
    passes.back().speeds.insert(std::abs(speed));
  }
  ASSERT_EQ(passes.size(), 13u);
  for (std::size_t round = 0; round < 12; round += 6) {
    std::multiset<std::pair<float, bool>> seen;
    for (std::size_t i = round; i < round + 6; ++i) {
      EXPECT_EQ(passes[i].side, i % 2 == 0 ? 1.0f : -1.0f) << i;
      const bool halts = passes[i].speeds.size() > 1;
      seen.insert({passes[i].row, halts});
      EXPECT_EQ(passes[i].shots > 21, halts) << "one burst or two: " << passes[i].shots;
      if (!halts) continue;
      EXPECT_LT(std::abs(passes[i].haltX), 2.7f);
      ASSERT_EQ(passes[i].speeds.size(), 3u);  // crawl, afterwards, cruise
      EXPECT_FLOAT_EQ(*passes[i].speeds.begin(), 0.2f);
      EXPECT_NEAR(*std::next(passes[i].speeds.begin()), 4.0f - 0.0337f * 3.8f, 2e-3f);
    }
    for (const float row : {-3.3f, -6.3f, -10.43f})
      for (const bool halts : {false, true}) EXPECT_EQ(seen.count({row, halts}), 1u) << row << halts;
  }
}

// A match may end in mid-sweep; the next whale must not wait for the end of a sweep that nobody swims.
TEST(PiratePathing, ANewWhaleBeginsAnew) {
  WhaleScene scene;
  BuildWhale();
  int frames = 0;
  while (!PiratePathing::GetCourse().sweeping && ++frames < 3000) scene.Run(1);
  ASSERT_TRUE(PiratePathing::GetCourse().sweeping);
  EpisodeScene::Find("whale")->alive = false;
  Objects().RemoveDeadObjects();
  GameObject& second = BuildWhale();
  scene.Run(1);
  EXPECT_NEAR(PositionOf(second).x, kFirstX, 1e-3f);
}

TEST(BarnacleLogic, WaitsForAWhaleAndPaysForTwoHits) {
  WhaleScene scene;
  scene.Run(2);
  EXPECT_FALSE(scene.IsBarnacleThere());
  scene.Hit(scene.barnacle, 1, 5.0f);
  EXPECT_EQ(scene.Awarded(), 0) << "nothing to sit on yet";
  GameObject& whale = BuildWhale();
  scene.Run(1);
  EXPECT_FALSE(scene.IsBarnacleThere()) << "the whale was still in the middle";
  for (int i = 0; i < 5; ++i) {
    const Vec3 due = PositionOf(whale) + Vec3{2.4f, 0.9f, 0.0f};
    scene.Run(1);
    EXPECT_TRUE(scene.IsBarnacleThere());
    EXPECT_LT(Length(PositionOf(scene.barnacle) - due), 1e-4f);
  }
  scene.Hit(scene.barnacle, 1, 1.9f);
  EXPECT_EQ(scene.Awarded(), 0) << "too slow";
  scene.Hit(scene.barnacle, 1, 2.1f);
  EXPECT_FALSE(scene.logic->IsDetached());
  scene.Hit(scene.barnacle, 2, 5.0f);
  EXPECT_EQ(scene.Awarded(), 10);
  EXPECT_EQ(WhaleScene::HealthOf(whale).health, 18);
  EXPECT_EQ(scene.FramesOf("sound 16").size(), 2u);
  scene.Hit(scene.barnacle, 2, 5.0f);
  EXPECT_EQ(scene.Awarded(), 10) << "it has dropped off";
  const float y = PositionOf(scene.barnacle).y;
  scene.Run(60);
  EXPECT_LT(PositionOf(scene.barnacle).y, y - 1.0f);
}

TEST(BossHealth, AtItsEndTheWhaleAndItsBarnaclesGoInsteadOfPassingAgain) {
  WhaleScene scene;
  GameObject& whale = BuildWhale();
  scene.Run(2);
  for (int i = 0; i < 19; ++i) scene.Hit(whale, 0, 5.0f);
  scene.Hit(whale, 0, 1.0f);
  EXPECT_EQ(WhaleScene::HealthOf(whale).health, 1);
  EXPECT_EQ(scene.FramesOf("sound 21").size(), 19u);
  scene.Hit(whale, 3, 5.0f);
  scene.Run(100);
  EXPECT_NE(EpisodeScene::Find("whale"), nullptr) << "not in mid-pass";
  scene.Run(1200);
  EXPECT_EQ(EpisodeScene::Find("whale"), nullptr);
  EXPECT_EQ(EpisodeScene::CountObjects("barnacle"), 0);
}

TEST(WhaleBoss, LetsPlayersClearOldRingsAndLeavesTheWhale) {
  WhaleScene scene;
  auto rule = CreateObjective("WhaleBoss");
  ASSERT_NE(rule, nullptr);
  rule->Begin();
  GameObject& ring = scene.world.AddSphere("ringstatic", {});
  GalePhysics::Contact contact;
  contact.first = &BodyOf(*GetPlayerObject(0));
  contact.second = &BodyOf(ring);
  contact.firstOwner = GetPlayerObject(0);
  contact.secondOwner = &ring;
  rule->OnContact(contact);
  EXPECT_FALSE(ring.alive);
  rule->End();
  EXPECT_NE(EpisodeScene::Find("whale"), nullptr);
}
