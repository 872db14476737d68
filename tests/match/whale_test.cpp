#include <cmath>
#include <set>

#include "episode_scene.h"
#include "match/rules/objective_factory.h"
#include "match/whale/barnacle_logic.h"
#include "match/whale/boss_health.h"
#include "match/whale/make_a_whale.h"
#include "match/whale/pirate_pathing.h"
#include "physics/primitive_assemblage.h"

namespace {

// Players and a barnacle that waits for a whale.
class WhaleTest : public PlayersTest {
 public:
  WhaleTest() { barnacle.Insert(std::make_unique<Sprite>()); }

  bool IsBarnacleThere() const { return barnacle.Get<Sprite>()->visible && !IsGhost(barnacle); }
  static int HealthOf(const GameObject& whale) {
    return static_cast<BossHealth*>(whale.Get<ScriptBox>()->GetScript("bosshealth"))->health;
  }

  GameObject& barnacle =
      world.AddSphere("barnacle", {2.4f, 0.9f, 0.0f}, {.inverseMass = 0.0f, .radius = 0.5f, .group = 0});
  BarnacleLogic& logic = Attach<BarnacleLogic>(barnacle);
};

constexpr float kFirstX = 26.0f - 4.0f * 0.0425f;  // after the frame of the placing

struct Pass {
  float row;
  std::set<float> speeds;
  int shots = 0;
};

}  // namespace

TEST_F(WhaleTest, AMakerBecomesAWhaleAndWhateverPaysGoes) {
  GameObject& prize = world.Add("crate");
  prize.AddComponent("GivePoints");
  GameObject& maker = world.Add("maker");
  Attach<MakeAWhale>(maker).Update(0.01f);
  EXPECT_FALSE(maker.alive || prize.alive);
  const auto& hull = *Find("whale")->Get<GalePhysics::PrimitiveAssemblage>();
  EXPECT_EQ(hull.boxes.size(), 2u);
  EXPECT_EQ(hull.collisionGroup, 0u) << "no cannonball stops it";
  EXPECT_EQ(BodyOf(*Find("whale")).inverseMass, 0.0f);
}

// A round has six passes: each of three rows once straight through and once with a halt, and the sides alternate. Every
// placing starts a burst of the fountain and every halt another. A match may end in mid-sweep; the next whale must not
// wait for the end of a sweep that nobody swims.
TEST_F(WhaleTest, SwimsEveryPatternOnceARoundAndANewOneBeginsAnew) {
  GameObject& whale = BuildWhale();
  std::vector<Pass> passes;
  std::size_t heard = 0;
  while (passes.size() < 13 && frame < 9000) {
    Run(1);
    const Vec3& p = PositionOf(whale);
    const float speed = BodyOf(whale).velocity.x;
    if (std::abs(speed) == 4.0f && std::abs(std::abs(p.x) - kFirstX) < 1e-3f) {
      const float side = passes.size() % 2 == 0 ? 1.0f : -1.0f;
      EXPECT_EQ(std::copysign(1.0f, p.x), side);
      EXPECT_EQ(speed, -4.0f * side);
      EXPECT_EQ(whale.GetTransform().graphicsScale.x, -3.0f * side);
      EXPECT_NEAR(AngleAboutZ(whale.GetTransform().orientation), 1.57f * side, 1e-5f);
      passes.push_back({p.y, {}});
    }
    passes.back().speeds.insert(std::abs(speed));
    EXPECT_TRUE(std::abs(speed) > 1.0f || std::abs(p.x) < 2.7f) << "it halts at " << p.x;
    for (; heard < log.size(); ++heard) passes.back().shots += log[heard].second == "sound 18" ? 1 : 0;
  }
  ASSERT_EQ(passes.size(), 13u);
  for (const std::size_t round : {0u, 6u}) {
    std::set<std::pair<float, bool>> seen;
    for (std::size_t i = round; i < round + 6; ++i) {
      const auto& [row, speeds, shots] = passes[i];
      const bool halts = speeds.size() > 1;
      seen.insert({row, halts});
      EXPECT_EQ(shots > 21, halts) << "one burst or two: " << shots;
      if (!halts) continue;
      ASSERT_EQ(speeds.size(), 3u);  // crawl, afterwards, cruise
      EXPECT_FLOAT_EQ(*speeds.begin(), 0.2f);
      EXPECT_NEAR(*std::next(speeds.begin()), 4.0f - 0.0337f * 3.8f, 2e-3f);
    }
    const std::set<std::pair<float, bool>> all = {{-3.3f, false}, {-6.3f, false}, {-10.43f, false},
                                                  {-3.3f, true},  {-6.3f, true},  {-10.43f, true}};
    EXPECT_EQ(seen, all);
  }
  while (!PiratePathing::GetCourse().sweeping && frame < 12000) Run(1);
  ASSERT_TRUE(PiratePathing::GetCourse().sweeping);
  whale.alive = false;
  GameObject& second = BuildWhale();
  Run(1);
  EXPECT_NEAR(PositionOf(second).x, kFirstX, 1e-3f);
}

TEST_F(WhaleTest, ABarnacleWaitsForAWhaleAndPaysForTwoHits) {
  Run(2);
  EXPECT_FALSE(IsBarnacleThere());
  Hit(barnacle, Player(1), 5.0f);  // nothing to sit on yet
  GameObject& whale = BuildWhale();
  Run(1);
  EXPECT_FALSE(IsBarnacleThere()) << "the whale was still in the middle";
  for (int i = 0; i < 5; ++i) {
    const Vec3 due = PositionOf(whale) + Vec3{2.4f, 0.9f, 0.0f};
    Run(1);
    EXPECT_TRUE(IsBarnacleThere());
    EXPECT_LT(Length(PositionOf(barnacle) - due), 1e-4f);
  }
  const Vec3 place = PositionOf(barnacle);
  logic.GiveBack();
  EXPECT_EQ(PositionOf(barnacle), (Vec3{2.4f, 0.9f, 0.0f})) << "a file keeps its place on a whale in mid-stage";
  logic.TakeAgain();
  EXPECT_EQ(PositionOf(barnacle), place);
  // The second one is too slow, and with the last but one it drops off.
  for (const auto& [speed, paid] : {std::pair{2.1f, 5}, {1.9f, 5}, {5.0f, 10}, {5.0f, 10}}) {
    Hit(barnacle, Player(2), speed);
    EXPECT_EQ(Awarded(), paid);
    EXPECT_EQ(logic.IsDetached(), paid == 10);
  }
  EXPECT_EQ(HealthOf(whale), 18);
  EXPECT_EQ(FramesOf("sound 16").size(), 2u);
  const float y = PositionOf(barnacle).y;
  Run(60);
  EXPECT_LT(PositionOf(barnacle).y, y - 1.0f);
}

TEST_F(WhaleTest, AtItsEndTheWhaleAndItsBarnaclesGoInsteadOfPassingAgain) {
  GameObject& whale = BuildWhale();
  Run(2);
  for (int i = 0; i < 19; ++i) Hit(whale, Player(0), 5.0f);
  Hit(whale, Player(0), 1.0f);
  EXPECT_EQ(HealthOf(whale), 1);
  EXPECT_EQ(FramesOf("sound 21").size(), 19u);
  Hit(whale, Player(3), 5.0f);
  Run(100);
  EXPECT_NE(Find("whale"), nullptr) << "not in mid-pass";
  Run(1200);
  EXPECT_EQ(Find("whale"), nullptr);
  EXPECT_EQ(CountObjects("barnacle"), 0);
}

TEST_F(WhaleTest, TheRuleLetsPlayersClearOldRingsAndLeavesTheWhale) {
  const auto rule = CreateObjective("WhaleBoss");
  rule->Begin();
  GameObject& ring = world.AddSphere("ringstatic", {});
  rule->OnContact(ContactOf(Player(0), ring));
  EXPECT_FALSE(ring.alive);
  rule->End();
  EXPECT_NE(Find("whale"), nullptr);
}
