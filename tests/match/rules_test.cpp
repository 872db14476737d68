#include <functional>
#include <set>

#include "core/random.h"
#include "episode_scene.h"
#include "match/player/character_controller.h"
#include "match/rules/objective_factory.h"

namespace {

// Those that the rules here make their objects of.
constexpr auto kArchetypes = {"starsonfish", "ringstatic", "theball", "shadow", "cannonball", "stunstars"};

// One rule that runs without a manager: the test is the clock and the physics.
class RuleTest : public PlayersTest {
 public:
  RuleTest() { CopyShipped(kArchetypes); }

  void Begin(const char* type) {
    rule = CreateObjective(type);
    rule->Begin();
  }
  // Frames of the rule alone; in each, `perFrame` may tell of overlaps and contacts. Gives all that was paid so far.
  long long RunRule(int frames, const std::function<void()>& perFrame = nullptr) {
    for (int i = 0; i < frames; ++i) {
      rule->Update(kStep);
      Time().elapsedTime += kStep;
      if (perFrame) perFrame();
    }
    return Awarded();
  }
  void Overlap(int player, GameObject& thing) { rule->OnCollision({&Player(player), &thing}); }
  // Both sides of a contact tell of it, the first one first.
  void Meet(GameObject& a, float speedA, GameObject& b, float speedB) {
    BodyOf(a).velocity = {speedA, 0.0f, 0.0f};
    BodyOf(b).velocity = {speedB, 0.0f, 0.0f};
    for (GalePhysics::Contact contact : {ContactOf(a, b), ContactOf(b, a)}) {
      contact.normal = {1.0f, 0.0f, 0.0f};
      rule->OnContact(contact);
    }
  }
  void Meet(int a, float speedA, int b, float speedB) { Meet(Player(a), speedA, Player(b), speedB); }
  std::size_t CountEvents(std::string_view text) const { return FramesOf(text).size(); }

  std::unique_ptr<Objective> rule;
};

}  // namespace

// Two seconds alone are four points; while two stay, each overlap of the one undoes the other's. Both players tell of
// the ramming, which stuns once.
TEST_F(RuleTest, TheHillPaysOneWhoIsAloneAndNobodyWhileTwoStayAndARammedKingIsStunned) {
  Begin("KingOfTheHill");
  GameObject& hill = *Find("TheHill");
  const Sprite& picture = *hill.Get<Sprite>();
  EXPECT_TRUE(IsGhost(hill));
  EXPECT_EQ(RunRule(237, [&] { Overlap(2, hill); }), 4);
  EXPECT_EQ(picture.b, 1.0f) << "the hill wears the king's colour";
  EXPECT_FLOAT_EQ(picture.a, 0.75f);
  const auto overlapByTwo = [&] {
    for (const int player : {0, 1, 0}) Overlap(player, hill);
  };
  EXPECT_EQ(RunRule(300, overlapByTwo), 4);
  RunRule(60);
  EXPECT_FLOAT_EQ(picture.a, 0.25f);
  EXPECT_EQ(RunRule(2, [&] { Overlap(1, hill); }), 5) << "an empty hill's clock runs on, so the first touch pays";
  Meet(0, 2.0f, 1, 1.0f);  // not above 3 together
  Meet(3, 2.5f, 1, -1.0f);
  Meet(3, 9.0f, 0, 9.0f);  // no king
  EXPECT_EQ(CountEvents("stun Player2"), 1u);
  EXPECT_EQ(CountObjects("stunstars"), 1);
  rule->End();
  EXPECT_FALSE(hill.alive);
}

// Nobody has points, so the fourth player is ranked last.
TEST_F(RuleTest, TheCrownPaysItsHolderAndPassesOncePerFrameToWhoRamsHim) {
  Begin("Crown");
  GameObject& crown = *Find("crown");
  const auto expectOn = [&](int player) {
    EXPECT_EQ(PositionOf(crown), PositionOf(Player(player)) + (Vec3{0.0f, 1.0f, 0.0f}));
  };
  expectOn(3);
  EXPECT_EQ(RunRule(117), 0);
  EXPECT_EQ(RunRule(1), 3);
  RunRule(50);
  Meet(2, 2.0f, 3, 0.0f);  // not fast
  Meet(1, 2.1f, 3, 0.0f);  // the second telling must not give it back
  Meet(2, 9.0f, 1, 0.0f);
  EXPECT_EQ(CountEvents("sound 25"), 1u);
  RunRule(1);
  expectOn(1);
  EXPECT_EQ(RunRule(67), 6) << "a pass does not start the second anew";
  rule->End();
  EXPECT_EQ(Awarded(), 10) << "the last holder's bonus";
  EXPECT_FALSE(crown.alive);
}

// Of a ring's place y is drawn before x. The first telling of a collision drops the slower one's chain, the second one
// must not sound again; a draw costs nobody anything.
TEST_F(RuleTest, AChainOfRingsPaysEachSecondAndAtTheEndIfItIsNotLost) {
  SeedRandom(77);
  Begin("CollectTheRings");
  EXPECT_EQ(CountObjects("ringstatic"), 20);
  SeedRandom(77);
  const float y = static_cast<float>(Random()) / 2340.5f - 7.0f;
  const float x = static_cast<float>(Random()) / 1365.2916f - 12.0f;
  EXPECT_EQ(PositionOf(*Find("ringstatic")), (Vec3{x, y, 0.0f}));
  for (int i = 0; i < 5; ++i) {
    GameObject& ring = *Find("ringstatic");
    Overlap(2, ring);
    Overlap(0, ring);  // too late
    EXPECT_EQ(ring.name, "ringfollowing");
    EXPECT_EQ(ring.Get<Sprite>()->r, 0.0f);
    EXPECT_EQ(BodyOf(ring).generators.size(), 1u);
  }
  EXPECT_EQ(CountEvents("sound 3"), 5u);
  EXPECT_EQ(RunRule(240), 2);
  EXPECT_EQ(CountObjects("ringfollowing"), 3);
  EXPECT_EQ(CountObjects("ringstatic"), 19) << "two more each second";
  GameObject& ring = *Find("ringstatic");
  Overlap(1, ring);
  for (const float speed : {5.0f, 2.0f, 5.5f}) {
    Meet(0, speed, 1, -4.5f);
    EXPECT_EQ(CountEvents("sound 4"), speed == 5.5f ? 1u : 0u);
  }
  EXPECT_EQ(ring.name, "ringstatic");
  EXPECT_TRUE(BodyOf(ring).generators.empty());
  EXPECT_FLOAT_EQ(ring.Get<Sprite>()->g, 0.25f);
  rule->End();
  EXPECT_EQ(Awarded(), 5);
  EXPECT_EQ(CountObjects("ringstatic"), 0);
}

// Its clock starts when it is made, so one made a second before it begins pays in its first update.
TEST_F(RuleTest, TheBallPaysTheLastToTouchIt) {
  rule = CreateObjective("lotbb");
  Time().elapsedTime += 1.0f;
  rule->Begin();
  GameObject& ball = *Find("theball");
  const std::string& picture = ball.Get<Sprite>()->texturePath;
  EXPECT_EQ(RunRule(1), 3);
  EXPECT_EQ(picture, "yellowball.png") << "the last-ranked player starts";
  Meet(Player(0), 2.5f, ball, 0.0f);
  Meet(Player(2), 1.5f, ball, 9.0f);  // a slow touch
  EXPECT_EQ(picture, "redball.png");
  EXPECT_EQ(CountEvents("sound 20"), 1u);
  EXPECT_EQ(RunRule(118), 6);
  rule->End();
  EXPECT_FALSE(ball.alive);
}

TEST_F(RuleTest, CannonballsFallAtTheirRateOnTheirShadowsAndBothGo) {
  rule = CreateObjective("CannonFall");
  ReadValues(*rule, "Rate: 2\nRateVariation: 0\nSpeed: 1.5\nspeedVariation: 0\n");
  rule->Begin();
  const std::uint32_t before = RandomState();
  RunRule(58);
  EXPECT_EQ(RandomState(), before) << "a range of no width draws nothing";
  RunRule(1);
  GameObject& ball = *Find("cannonball");
  GameObject& shadow = *Find("shadow");
  SeedRandom(before);
  const float x = static_cast<float>(Random()) / 2047.9375f - 8.0f;
  const float y = static_cast<float>(Random()) / 2978.818f - 5.5f;
  EXPECT_EQ(PositionOf(ball), (Vec3{x, y, 20.0f}));
  EXPECT_EQ(PositionOf(shadow), (Vec3{x, y, 0.0f}));
  world.RunFrame();
  EXPECT_LT(Length(PositionOf(ball) - Vec3{x, y, 20.0f - 1.5f * 0.0425f}), 1e-4f) << "nothing slows its fall";
  shadow.Update(kStep);
  EXPECT_FLOAT_EQ(shadow.GetTransform().graphicsScale.x, -0.005f);
  BodyOf(ball).velocity = {3.0f, 0.0f, 0.7f};  // it has hit somebody
  RunRule(1);
  EXPECT_EQ(BodyOf(ball).velocity, (Vec3{0.0f, 0.0f, 1.5f}));
  PositionOf(ball).z = 25.1f;
  RunRule(1);
  EXPECT_FALSE(ball.alive || shadow.alive);
  RunRule(58);
  PositionOf(*Find("cannonball")).z = 0.0f;
  RunRule(1);
  EXPECT_EQ(CountObjects("cannonball"), 0);
  RunRule(58);
  rule->End();
  EXPECT_EQ(CountObjects("cannonball") + CountObjects("shadow"), 0);
}

TEST_F(RuleTest, CannonballsFallAtSpeedsAroundTheirOwn) {
  rule = CreateObjective("CannonFall");
  ReadValues(*rule, "Rate: 1000\nRateVariation: 0\nSpeed: 1.5\nspeedVariation: 0.6\n");
  rule->Begin();
  RunRule(40);
  std::set<float> speeds;
  for (GameObject* ball : FindAll("cannonball")) speeds.insert(-BodyOf(*ball).velocity.z);
  EXPECT_GT(speeds.size(), 20u);
  EXPECT_GE(*speeds.begin(), 1.2f);
  EXPECT_LE(*speeds.rbegin(), 1.8f);
  EXPECT_GT(*speeds.rbegin() - *speeds.begin(), 0.3f);
}

// Without its archetypes a rule has nothing to show, and must not stumble over it.
TEST_F(RuleTest, RulesRunWithoutTheirArchetypes) {
  for (const char* name : kArchetypes) std::filesystem::remove(name);
  world.WriteFile("miner", "{\n}\n");
  for (const std::string_view type : ObjectiveNames()) {
    SCOPED_TRACE(type);
    world.Restart();
    world.ClearText();
    SetupMatch();
    Begin(type.data());
    RunRule(400, [&] { Meet(0, 5.0f, 1, 0.0f); });
    rule->End();
    EXPECT_FALSE(rule->IsActive());
    EXPECT_EQ(Count(world.text(), "the archetype \"miner\" makes no object"), type == "OctoMiners" ? 1 : 0);
  }
}

// Push and stun last two seconds; then the breakable scenery is gone and the shoal is there, for eight seconds.
TEST_F(RuleTest, MinersSweepEverybodyOutThenComeTheFish) {
  world.WriteFile("miner", File("goldfish", Box(ScriptText("DeathTimer", "Time: 1\n"))));
  for (const char* name : {"crate", "core crate"}) world.Add(name).AddComponent("GivePoints");
  Find("core crate")->core = true;
  PositionOf(Player(0)) = {-3.0f, 4.0f, 0.0f};
  PositionOf(Player(1)) = {};
  Begin("OctoMiners");
  RunRule(1);
  const Vec3& push = BodyOf(Player(0)).forceTotal;
  EXPECT_LT(Length(push - Vec3{-0.06f, 0.08f, 0.0f}), 1e-6f) << "0.5 / 5 outwards";
  EXPECT_EQ(BodyOf(Player(1)).forceTotal, Vec3{}) << "no way out of the very middle";
  RunRule(1);
  EXPECT_NEAR(push.x, -0.12f, 1e-6f) << "pushes pile up until the physics runs";
  EXPECT_EQ(CountEvents("stun Player1"), 1u);
  for (const int frames : {230, 5}) {
    RunRule(frames);
    EXPECT_EQ(FindController(Player(3))->stunned, frames == 230);
    EXPECT_EQ(CountObjects("crate"), frames == 230 ? 1 : 0);
    EXPECT_EQ(CountObjects("core crate"), 1);
  }
  EXPECT_EQ(CountEvents("sound 15"), 1u);
  GameObject& fish = *Find("goldfish");
  for (const float step : {7.9f, 0.2f}) {
    fish.Update(step);
    EXPECT_EQ(fish.alive, step == 7.9f);
  }
}
