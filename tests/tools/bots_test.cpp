#include "tools/bots/bot_seats.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>

#include "core/random.h"
#include "folders.h"
#include "match/match_scene.h"
#include "match/rules/objective_factory.h"
#include "match/rules/what_pays.h"

// A picture that nobody draws any more, or a rule of another name, would leave a rule without players.
TEST(WhatPays, NamesRulesAndPicturesThatThereAre) {
  for (const PayingThing& thing : PayingThings()) {
    EXPECT_TRUE(thing.rule.empty() || CreateObjective(thing.rule)) << thing.rule;
    EXPECT_TRUE(std::filesystem::exists(BuildFolder() + "/Texture/" + std::string(thing.picture))) << thing.picture;
  }
}

TEST(BotKinds, FourNamesOrOne) {
  BotKinds kinds{};
  EXPECT_EQ(ParseBotKinds("lead", kinds), "");
  EXPECT_EQ(kinds[3], BotKind::kLead);
  EXPECT_EQ(ParseBotKinds("near,hop,none,lead", kinds), "");
  EXPECT_EQ(kinds, (BotKinds{BotKind::kNear, BotKind::kHop, BotKind::kNone, BotKind::kLead}));
  for (const char* wrong : {"", "lead,near", "lead,near,hop,none,hop", "lead,near,hop,", "Lead"})
    EXPECT_NE(ParseBotKinds(wrong, kinds), "") << wrong;
}

// A fish crosses the stage faster than one who aims where it is seen can follow. By pad and by mouse alike, and the
// same again from the same seed; the game's random stream is not touched.
TEST(Bots, LeadHitsWhatMoves) {
  const auto play = [](BotKind pad, BotKind mouse, std::uint32_t seed) {
    MatchScene match;
    for (const auto& object : Objects().GetObjects())
      if (!object->core) object->alive = false;
    for (int slot = 1; slot < kPlayers; ++slot) match.platform.ConnectPad(slot, true);
    BotSeats seats({pad}, mouse, seed);
    seats.Connect(match.platform);
    GameObject& fish = match.world.AddSphere("fish", {-14.0f, -5.0f, 0.0f}, {.velocity = {3.0f, 0.0f, 0.0f}});
    fish.Insert(std::make_unique<Sprite>()).texturePath = "fish1.png";
    int hits = 0;
    for (int frame = 0; frame < 200; ++frame) {
      const std::uint32_t random = RandomState();
      seats.Play(frame, match.platform);
      EXPECT_EQ(RandomState(), random);
      match.Run();
      hits += BodyOf(fish).velocity == Vec3{3.0f, 0.0f, 0.0f} ? 0 : 1;
    }
    return std::pair(hits, PositionOf(*GetPlayerObject(0)));
  };
  EXPECT_EQ(play(BotKind::kNear, BotKind::kNone, 1).first, 0);
  for (const auto& [pad, mouse] : {std::pair{BotKind::kLead, BotKind::kNone}, {BotKind::kNone, BotKind::kLead}}) {
    const auto [hits, place] = play(pad, mouse, 1);
    EXPECT_GT(hits, 0) << NameOf(mouse);
    EXPECT_TRUE(play(pad, mouse, 1).second == place) << NameOf(mouse);
    EXPECT_FALSE(play(pad, mouse, 2).second == place) << NameOf(mouse);
  }
}
