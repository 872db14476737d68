// One match of the shipped levels, flown by the computer from its opening to the podium.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "graphics/sprite_text.h"
#include "match_scene.h"
#include "tools/simulate/run_check.h"

// Four pilots rest against the walls when the piece begins around them, and are inside its ring at its end.
TEST(ShippedMatch, RingsLetOutWhoStoodAtTheWall) {
  constexpr int kSection = 2360;  // frames in 20 seconds
  constexpr Vec3 kPlaces[kPlayers] = {
      {14.5f, 5.5f, 0.0f}, {-14.5f, 2.6f, 0.0f}, {13.5f, 9.5f, 0.0f}, {-14.5f, -7.3f, 0.0f}};
  for (const char* piece : {"sandbank", "ballpark"}) {
    MatchScene match;
    SetDemoMode(true);
    match.Run(1);
    Objects().LoadLevel(piece);
    for (int i = 0; i < kPlayers; ++i) {
      PositionOf(*GetPlayerObject(i)) = kPlaces[i];
      BodyOf(*GetPlayerObject(i)).velocity = {};
    }
    match.Run(kSection - 100);
    for (int i = 0; i < kPlayers; ++i) {
      const Vec3& place = PositionOf(*GetPlayerObject(i));
      EXPECT_TRUE(std::abs(place.x) <= 13.0f && std::abs(place.y) <= 8.2f) << piece << " shuts in player " << i;
    }
  }
}

// Bubbles that are still under way when the stage is ranked and cleared are lost. In no frame is anything wrong that
// simulate --check would tell.
TEST(ShippedMatch, RunsToThePodiumByItsRules) {
  MatchScene match(MatchScene::Rules::kOn);
  SetDemoMode(true);
  std::map<std::string, int> frames;  // in which it was said last
  int credited = 0;
  RunCheck check;
  while (!frames.contains("screen podium") && match.frame < 20000) {
    match.Run(1);
    check.EndFrame(match.frame);
    for (const std::string& text : match.log) {
      frames[text] = match.frame;
      if (text.starts_with("points ") && GetPlayerObject(0) != nullptr)
        credited += std::stoi(text.substr(text.rfind(' ')));
    }
    match.log.clear();
  }
  EXPECT_EQ(check.GetFault(), "");
  ASSERT_TRUE(frames.contains("screen podium"));
  EXPECT_NEAR(frames["screen podium"] - frames["screen finish"], 365, 3);
  int shown = 0;
  for (const auto& object : Objects().GetObjects())
    if (object->name == "portrait points") shown += std::stoi(object->Get<SpriteText>()->text);
  EXPECT_EQ(shown, credited);
  EXPECT_GT(shown, 100);
  for (const char* rule :
       {"HitObjects", "CollectTheRings", "CannonFall", "KingOfTheHill", "Crown", "OctoMiners", "lotbb", "WhaleBoss"})
    EXPECT_TRUE(frames.contains(std::string("objective end ") + rule)) << rule;
}
