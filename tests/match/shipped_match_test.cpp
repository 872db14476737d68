// One match of the shipped levels, flown by the computer from its opening to the podium, watched frame by frame.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>

#include "graphics/sprite_text.h"
#include "match_scene.h"

namespace {

constexpr int kMostFrames = 20000;
constexpr float kFrameTime = 0.0425f;  // seconds that the physics advances in a frame

struct Shot {
  std::uint32_t shadowId = 0;
  Vec3 place;
  float speed = 0.0f;
  bool touched = false;
};

class MatchWatch {
 public:
  MatchWatch() { SetDemoMode(true); }

  bool Happened(std::string_view text) const { return FrameOf(text) >= 0; }
  int FrameOf(std::string_view text) const {
    for (const auto& [when, event] : events)
      if (event == text) return when;
    return -1;
  }
  void RunFrame() {
    match.Run(1);
    for (const std::string& text : match.log) events.emplace_back(frame, text);
    match.log.clear();
    WatchCannonballs();
    WatchBubbles();
    if (cleared < 0 && GetPlayerObject(0) == nullptr) cleared = frame;
    ++frame;
  }

  MatchScene match{MatchScene::Rules::kOn};
  int frame = 0;
  int cleared = -1;  // frame in which the stage was ranked and cleared; bubbles that were still under way are lost
  std::vector<std::pair<int, std::string>> events;
  std::map<std::uint32_t, Shot> shots;
  std::map<int, int> bubbles;  // frame in which they appeared: how many

 private:
  void WatchCannonballs() {
    for (auto& [id, shot] : shots) {  // those of the frame before
      const GameObject* ball = Objects().GetObject(id);
      ASSERT_EQ(ball != nullptr, Objects().GetObject(shot.shadowId) != nullptr) << "frame " << frame;
      if (ball == nullptr || shot.touched) continue;
      const Vec3& place = ball->GetTransform().position;
      shot.touched = BodyOf(*Objects().GetObject(id)).velocity.z != -shot.speed;
      if (shot.touched) continue;
      EXPECT_NEAR(shot.place.z - place.z, kFrameTime * shot.speed, 1e-4f);
      shot.place = place;
      const Vec3& dark = Objects().GetObject(shot.shadowId)->GetTransform().position;
      EXPECT_EQ(dark, (Vec3{place.x, place.y, 0.0f}));
    }
    std::erase_if(shots, [](const auto& entry) { return Objects().GetObject(entry.first) == nullptr; });
    for (const auto& object : Objects().GetObjects())
      if (object->name == "cannonball" && BodyOf(*object).velocity.z < -1.0f && !shots.contains(object->id))
        MeetShot(*object);  // the ships' own fly level
  }
  void MeetShot(GameObject& ball) {
    Shot shot = {0, ball.GetTransform().position, -BodyOf(ball).velocity.z, false};
    EXPECT_NEAR(shot.place.z, 20.0f - kFrameTime * shot.speed, 1e-4f);
    EXPECT_LE(std::abs(shot.place.x), 8.0f);
    EXPECT_LE(std::abs(shot.place.y), 5.5f);
    EXPECT_GE(shot.speed, 1.2f);  // 1.5, less or more half of the 0.6 that the level allows
    EXPECT_LE(shot.speed, 1.8f);
    for (const auto& object : Objects().GetObjects())
      if (object->name == "shadow" && object->GetTransform().position.x == shot.place.x) shot.shadowId = object->id;
    ++shotsSeen;
    shots[ball.id] = shot;
  }
  void WatchBubbles() {
    for (const auto& object : Objects().GetObjects())
      if (object->name == "APoint" && seen_.insert(object->id).second) ++bubbles[frame];
  }

  std::set<std::uint32_t> seen_;

 public:
  int shotsSeen = 0;
};

// Four pilots rest against the walls when the piece begins around them; how many are not inside its ring at its end.
int CountShutIn(const char* piece) {
  constexpr int kSection = 2360;  // frames in 20 seconds
  constexpr Vec3 kPlaces[kPlayers] = {
      {14.5f, 5.5f, 0.0f}, {-14.5f, 2.6f, 0.0f}, {13.5f, 9.5f, 0.0f}, {-14.5f, -7.3f, 0.0f}};
  MatchScene match;
  SetDemoMode(true);
  match.Run(1);
  Objects().LoadLevel(piece);
  for (int i = 0; i < kPlayers; ++i) {
    GameObject& player = *GetPlayerObject(i);
    player.GetTransform().position = kPlaces[i];
    BodyOf(player).velocity = {};
  }
  match.Run(kSection - 100);
  int shutIn = 0;
  for (int i = 0; i < kPlayers; ++i) {
    const Vec3& place = GetPlayerObject(i)->GetTransform().position;
    if (std::abs(place.x) > 13.0f || std::abs(place.y) > 8.2f) ++shutIn;
  }
  return shutIn;
}

}  // namespace

TEST(ShippedMatch, RingsLetOutWhoStoodAtTheWall) {
  EXPECT_EQ(CountShutIn("sandbank"), 0);
  EXPECT_EQ(CountShutIn("ballpark"), 0);
}

TEST(ShippedMatch, RunsToThePodiumByItsRules) {
  MatchWatch watch;
  while (!watch.Happened("screen podium") && watch.frame < kMostFrames) watch.RunFrame();
  ASSERT_TRUE(watch.Happened("screen podium"));
  EXPECT_GE(watch.shotsSeen, 15);

  // The holder of the crown is paid every second, and a pass of the crown does not restart it.
  const int crownBegin = watch.FrameOf("objective begin Crown");
  const int crownEnd = watch.FrameOf("objective end Crown");
  const int firstPay = watch.bubbles.lower_bound(crownBegin + 210)->first;
  int pays = 0;
  for (int due = firstPay; due < crownEnd; due += 118) {
    const auto paid = watch.bubbles.lower_bound(due - 1);
    ASSERT_NE(paid, watch.bubbles.end());
    EXPECT_NEAR(paid->first, due, 1);
    EXPECT_GE(paid->second, 2);
    due = paid->first;
    ++pays;
  }
  EXPECT_GE(pays, 18);

  // The end, counted from the clock's last frame, and the podium's numbers are what arrived.
  EXPECT_NEAR(watch.FrameOf("screen podium") - watch.FrameOf("screen finish"), 365, 3);
  int credited = 0;
  for (const auto& [when, text] : watch.events)
    if (when < watch.cleared && text.rfind("points ", 0) == 0) credited += std::stoi(text.substr(text.rfind(' ')));
  int shown = 0;
  for (const auto& object : Objects().GetObjects())
    if (object->name == "portrait points") shown += std::stoi(object->Get<SpriteText>()->text);
  EXPECT_EQ(shown, credited);
  EXPECT_GT(shown, 100);
  for (const char* rule :
       {"HitObjects", "CollectTheRings", "CannonFall", "KingOfTheHill", "Crown", "OctoMiners", "lotbb", "WhaleBoss"})
    EXPECT_TRUE(watch.Happened(std::string("objective end ") + rule)) << rule;
}
