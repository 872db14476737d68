#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/character_controller.h"
#include "match/new_game.h"
#include "match/objective_factory.h"
#include "match/players.h"
#include "match/scoring.h"
#include "physics/sphere_collider.h"
#include "test_world.h"

namespace {

constexpr float kStep = 0.0085f;
// Those that the rules here make their objects of.
constexpr const char* kArchetypes[] = {"starsonfish", "ringstatic", "theball", "shadow", "cannonball", "stunstars"};

// Four players with displays, and one rule that runs without a manager: the test is the clock and the physics.
class RuleScene : public RunLogListener {
 public:
  explicit RuleScene(const char* rule) : before_(GetPointsAwarded()) {
    for (const char* name : kArchetypes)
      std::filesystem::copy_file(std::filesystem::path(BRINEWHIRL_GAME_DIR) / name, name);
    SetupMatch();
    Objects().RemoveDeadObjects();
    objective = CreateObjective(rule);
    SetRunLogListener(this);
  }
  RuleScene(const RuleScene&) = delete;
  RuleScene& operator=(const RuleScene&) = delete;
  ~RuleScene() override { SetRunLogListener(nullptr); }

  static GameObject& Player(int index) { return *GetPlayerObject(index); }
  static GameObject* Find(const char* name) { return Objects().FindObjectByName(name); }
  static bool IsStunned(int index) { return FindController(Player(index))->stunned; }
  // Frames of the rule alone; each sub-step `perFrame` may tell of overlaps and contacts.
  template <class Action>
  void Run(int frames, Action perFrame) {
    for (int i = 0; i < frames; ++i) {
      objective->Update(kStep);
      Time().elapsedTime += kStep;
      perFrame();
    }
  }
  void Run(int frames) {
    Run(frames, [] {});
  }
  // Both sides of a contact tell of it, the first one first.
  void Meet(GameObject& a, float speedA, GameObject& b, float speedB) {
    GalePhysics::Contact contact;
    contact.normal = {1.0f, 0.0f, 0.0f};
    contact.first = &BodyOf(a);
    contact.second = &BodyOf(b);
    contact.firstOwner = &a;
    contact.secondOwner = &b;
    contact.first->velocity = {speedA, 0.0f, 0.0f};
    contact.second->velocity = {speedB, 0.0f, 0.0f};
    objective->OnContact(contact);
    std::swap(contact.first, contact.second);
    std::swap(contact.firstOwner, contact.secondOwner);
    objective->OnContact(contact);
  }
  long long Awarded() const { return GetPointsAwarded() - before_; }
  long long CountEvents(std::string_view text) const { return std::count(log.begin(), log.end(), text); }
  void OnEvent(std::string_view text) override { log.emplace_back(text); }

  TestWorld world;
  std::unique_ptr<Objective> objective;
  std::vector<std::string> log;

 private:
  long long before_;
};

int CountNamed(std::string_view name) {
  int count = 0;
  for (const auto& object : Objects().GetObjects()) count += object->alive && object->name == name ? 1 : 0;
  return count;
}

}  // namespace

// Two seconds alone are four points; while two stay, each overlap of the one undoes the other's.
TEST(KingOfTheHill, PaysOneWhoIsAloneAndNobodyWhileTwoStay) {
  RuleScene scene("KingOfTheHill");
  scene.objective->Begin();
  GameObject* hill = scene.Find("TheHill");
  ASSERT_NE(hill, nullptr);
  EXPECT_TRUE(hill->Get<GalePhysics::SphereCollider>()->ghost);
  const auto on = [&](int player) { scene.objective->OnCollision({&scene.Player(player), hill}); };
  scene.Run(1, [&] { on(2); });
  scene.Run(236, [&] { on(2); });
  EXPECT_EQ(scene.Awarded(), 4);
  EXPECT_EQ(hill->Get<Sprite>()->b, 1.0f) << "the hill wears the king's colour";
  EXPECT_FLOAT_EQ(hill->Get<Sprite>()->a, 0.75f);
  scene.Run(300, [&] {
    for (int subStep = 0; subStep < 15; ++subStep) on(subStep % 2);
  });
  EXPECT_EQ(scene.Awarded(), 4);
  scene.Run(60);
  EXPECT_FLOAT_EQ(hill->Get<Sprite>()->a, 0.25f);
  scene.Run(2, [&] { on(3); });
  EXPECT_EQ(scene.Awarded(), 5) << "an empty hill's clock runs on, so the first touch pays at once";
  scene.objective->End();
  EXPECT_FALSE(hill->alive);
}

TEST(KingOfTheHill, ARammedKingIsStunnedOnceForBothTellings) {
  RuleScene scene("KingOfTheHill");
  scene.objective->Begin();
  scene.Run(2, [&] { scene.objective->OnCollision({&scene.Player(1), scene.Find("TheHill")}); });
  scene.Meet(scene.Player(0), 2.0f, scene.Player(1), 1.0f);
  EXPECT_EQ(scene.CountEvents("stun Player2"), 0) << "not above 3 together";
  scene.Meet(scene.Player(3), 2.5f, scene.Player(1), -1.0f);
  scene.Meet(scene.Player(3), 9.0f, scene.Player(0), 9.0f);
  EXPECT_EQ(scene.CountEvents("stun Player2"), 1);
  EXPECT_EQ(CountNamed("stunstars"), 1);
}

// Nobody has points, so the fourth player is ranked last.
TEST(GetTheCrown, PaysTheHolderAndPassesOncePerFrameToWhoRamsHim) {
  RuleScene scene("Crown");
  scene.objective->Begin();
  GameObject* crown = scene.Find("crown");
  ASSERT_NE(crown, nullptr);
  EXPECT_EQ(PositionOf(*crown), PositionOf(scene.Player(3)) + (Vec3{0.0f, 1.0f, 0.0f}));
  scene.Run(117);
  EXPECT_EQ(scene.Awarded(), 0);
  scene.Run(1);
  EXPECT_EQ(scene.Awarded(), 3);
  EXPECT_EQ(CountNamed("APoint"), 2) << "1 and 2 in either order";
  scene.Meet(scene.Player(1), 2.0f, scene.Player(3), 0.0f);
  EXPECT_EQ(scene.CountEvents("sound 25"), 0) << "not fast";
  scene.Meet(scene.Player(1), 2.1f, scene.Player(3), 0.0f);  // the second telling must not give it back
  scene.Meet(scene.Player(2), 9.0f, scene.Player(1), 0.0f);
  EXPECT_EQ(scene.CountEvents("sound 25"), 1);
  scene.Run(1);
  EXPECT_EQ(PositionOf(*crown), PositionOf(scene.Player(1)) + (Vec3{0.0f, 1.0f, 0.0f}));
  scene.objective->End();
  EXPECT_EQ(scene.Awarded(), 7) << "the last holder's bonus";
  EXPECT_FALSE(crown->alive);
}

// y is drawn before x.
TEST(CollectTheRings, PlacesRingsFromTheRandomStream) {
  RuleScene scene("CollectTheRings");
  SeedRandom(77);
  scene.objective->Begin();
  EXPECT_EQ(CountNamed("ringstatic"), 20);
  SeedRandom(77);
  const float y = static_cast<float>(Random()) / 2340.5f - 7.0f;
  const float x = static_cast<float>(Random()) / 1365.2916f - 12.0f;
  EXPECT_EQ(PositionOf(*scene.Find("ringstatic")), (Vec3{x, y, 0.0f}));
  scene.Run(119);
  EXPECT_EQ(CountNamed("ringstatic"), 22) << "two more each second";
  scene.objective->End();
  EXPECT_EQ(CountNamed("ringstatic"), 0);
}

TEST(CollectTheRings, AChainPaysEachSecondAndAtTheEnd) {
  RuleScene scene("CollectTheRings");
  scene.objective->Begin();
  for (int i = 0; i < 5; ++i) {
    GameObject* ring = scene.Find("ringstatic");
    scene.objective->OnCollision({&scene.Player(2), ring});
    scene.objective->OnCollision({&scene.Player(0), ring});  // too late
    EXPECT_EQ(ring->name, "ringfollowing");
    EXPECT_EQ(ring->Get<Sprite>()->r, 0.0f);
    EXPECT_EQ(BodyOf(*ring).generators.size(), 1u);
  }
  EXPECT_EQ(scene.CountEvents("sound 3"), 5);
  scene.Run(240);
  EXPECT_EQ(scene.Awarded(), 2);
  EXPECT_EQ(CountNamed("ringfollowing"), 3);
  scene.objective->End();
  EXPECT_EQ(scene.Awarded(), 5);
}

// The first telling drops the chain, the second one must not sound again; a draw costs nobody anything.
TEST(CollectTheRings, TheSlowerOneLosesHisChain) {
  RuleScene scene("CollectTheRings");
  scene.objective->Begin();
  GameObject& ring = *scene.Find("ringstatic");
  scene.objective->OnCollision({&scene.Player(1), &ring});
  scene.Meet(scene.Player(0), 5.0f, scene.Player(1), -4.5f);
  scene.Meet(scene.Player(0), 2.0f, scene.Player(1), -4.5f);
  EXPECT_EQ(scene.CountEvents("sound 4"), 0);
  scene.Meet(scene.Player(0), 5.5f, scene.Player(1), -4.5f);
  EXPECT_EQ(scene.CountEvents("sound 4"), 1);
  EXPECT_EQ(ring.name, "ringstatic");
  EXPECT_TRUE(BodyOf(ring).generators.empty());
  EXPECT_FLOAT_EQ(ring.Get<Sprite>()->g, 0.25f);
}

// Its clock starts when it is made, so one made a second before it begins pays in its first update.
TEST(LordOfTheBeachBall, PaysTheLastToTouchTheBall) {
  RuleScene scene("lotbb");
  Time().elapsedTime += 1.0f;
  scene.objective->Begin();
  GameObject* ball = scene.Find("theball");
  ASSERT_NE(ball, nullptr);
  scene.Run(1);
  EXPECT_EQ(scene.Awarded(), 3);
  EXPECT_EQ(ball->Get<Sprite>()->texturePath, "yellowball.png") << "the last-ranked player starts";
  scene.Meet(scene.Player(0), 2.5f, *ball, 0.0f);
  EXPECT_EQ(ball->Get<Sprite>()->texturePath, "redball.png");
  scene.Meet(scene.Player(2), 1.5f, *ball, 9.0f);
  EXPECT_EQ(ball->Get<Sprite>()->texturePath, "redball.png") << "a slow touch";
  EXPECT_EQ(scene.CountEvents("sound 20"), 1);
  scene.Run(118);
  EXPECT_EQ(scene.Awarded(), 6);
  scene.objective->End();
  EXPECT_FALSE(ball->alive);
}

TEST(CannonFall, DropsBallsAtItsRateOnTheirShadowsAndTakesBothAway) {
  RuleScene scene("CannonFall");
  Serializer text;
  text.OpenInMemory(6);
  for (const float value : {2.0f, 0.0f, 1.5f, 0.0f}) text.WriteFloat("", value);
  scene.world.WriteFile("values", "{\n" + text.TakeText() + "}\n");
  Serializer reader;
  ASSERT_TRUE(reader.OpenForRead("values"));
  scene.objective->Deserialize(reader);
  scene.objective->Begin();
  const std::uint32_t before = RandomState();
  scene.Run(58);
  EXPECT_EQ(RandomState(), before) << "a range of no width draws nothing";
  EXPECT_EQ(CountNamed("cannonball"), 0);
  scene.Run(1);
  GameObject* ball = scene.Find("cannonball");
  GameObject* shadow = scene.Find("shadow");
  ASSERT_TRUE(ball != nullptr && shadow != nullptr);
  const Vec3 place = PositionOf(*ball);
  EXPECT_EQ(place.z, 20.0f);
  EXPECT_EQ(PositionOf(*shadow), (Vec3{place.x, place.y, 0.0f}));
  EXPECT_EQ(BodyOf(*ball).velocity.z, -1.5f);
  shadow->Update(kStep);
  EXPECT_FLOAT_EQ(shadow->GetTransform().graphicsScale.x, -0.005f);
  BodyOf(*ball).velocity = {3.0f, 0.0f, 0.7f};  // it has hit somebody
  scene.Run(1);
  EXPECT_EQ(BodyOf(*ball).velocity, (Vec3{0.0f, 0.0f, 1.5f}));
  PositionOf(*ball).z = 25.1f;
  scene.Run(1);
  EXPECT_FALSE(ball->alive || shadow->alive);
  scene.Run(58);
  GameObject* second = scene.Find("cannonball");
  ASSERT_NE(second, nullptr);
  PositionOf(*second).z = 0.0f;
  scene.Run(1);
  EXPECT_FALSE(second->alive);
  scene.Run(58);
  scene.objective->End();
  EXPECT_EQ(CountNamed("cannonball") + CountNamed("shadow"), 0);
}

// Without its archetypes a rule has nothing to show, and must not stumble over it.
TEST(Rules, RunWithoutTheirArchetypes) {
  for (const char* rule :
       {"CannonFall", "HitObjects", "KingOfTheHill", "Crown", "CollectTheRings", "OctoMiners", "lotbb"}) {
    RuleScene scene(rule);
    scene.world.Restart();
    for (const char* name : kArchetypes) std::filesystem::remove(name);
    scene.world.WriteFile("miner", "{\n}\n");
    SetupMatch();
    ASSERT_NE(scene.objective, nullptr) << rule;
    scene.objective->Begin();
    scene.Run(400, [&] { scene.Meet(scene.Player(0), 5.0f, scene.Player(1), 0.0f); });
    scene.objective->End();
    EXPECT_FALSE(scene.objective->IsActive());
    const bool isMinerMissed = scene.world.text().find("the archetype \"miner\" makes no object") != std::string::npos;
    EXPECT_EQ(isMinerMissed, scene.objective->typeName == "OctoMiners") << rule;
  }
}

// Push and stun last two seconds; then the breakable scenery is gone and the shoal is there, for eight seconds.
TEST(OctoMiners, SweepsEverybodyOutThenReleasesTheShoal) {
  RuleScene scene("OctoMiners");
  scene.world.WriteFile("miner",
                        "{\n\t1: {\n\t\tName: goldfish\n\t\tCore: false\n\t\tComponent: \"ScriptBox\" {\n"
                        "\t\t\tComponent: \"DeathTimer\" {\n\t\t\t\tTime: 1\n\t\t\t}\n\t\t}\n\t}\n}\n");
  GameObject& crate = scene.world.Add("crate");
  crate.AddComponent("GivePoints");
  GameObject& coreCrate = scene.world.Add("core crate");
  coreCrate.AddComponent("GivePoints");
  coreCrate.core = true;
  PositionOf(scene.Player(0)) = {-3.0f, 4.0f, 0.0f};
  PositionOf(scene.Player(1)) = {};
  scene.objective->Begin();
  scene.Run(1);
  const Vec3 push = BodyOf(scene.Player(0)).forceTotal;
  EXPECT_NEAR(push.x, -0.06f, 1e-6f);  // 0.5 / 5 outwards
  EXPECT_NEAR(push.y, 0.08f, 1e-6f);
  EXPECT_EQ(BodyOf(scene.Player(1)).forceTotal, (Vec3{})) << "no way out of the very middle";
  scene.Run(1);
  EXPECT_NEAR(BodyOf(scene.Player(0)).forceTotal.x, -0.12f, 1e-6f) << "pushes pile up until the physics runs";
  EXPECT_EQ(scene.CountEvents("stun Player1"), 1);
  scene.Run(230);
  EXPECT_TRUE(scene.IsStunned(3));
  EXPECT_TRUE(crate.alive);
  scene.Run(5);
  EXPECT_FALSE(scene.IsStunned(3));
  EXPECT_FALSE(crate.alive);
  EXPECT_TRUE(coreCrate.alive);
  EXPECT_EQ(scene.CountEvents("sound 15"), 1);
  GameObject* fish = scene.Find("goldfish");
  ASSERT_NE(fish, nullptr);
  fish->Update(7.9f);
  EXPECT_TRUE(fish->alive);
  fish->Update(0.2f);
  EXPECT_FALSE(fish->alive);
}
