#include <gtest/gtest.h>

#include "core/event.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "graphics/sprite.h"
#include "match/character_controller.h"
#include "match/force_currency.h"
#include "match_scene.h"

namespace {

constexpr std::int16_t kPulled = 32767;
constexpr std::int16_t kLetGo = -32768;
constexpr float kFrameDamping = 0.97772f;  // √0.997 to the power of 15 sub-steps

int CountObjects(std::string_view picture) {
  int count = 0;
  for (const auto& object : Objects().GetObjects()) {
    const Sprite* sprite = object->Get<Sprite>();
    count += object->alive && sprite != nullptr && sprite->texturePath == picture ? 1 : 0;
  }
  return count;
}

CharacterController& ControllerOf(std::string_view player) {
  return *static_cast<CharacterController*>(
      MatchScene::Find(player).Get<ScriptBox>()->GetScript("CharacterController"));
}

}  // namespace

// A held trigger pays 10/45 a frame, also for the frame of the press, and the launch goes along the stick.
TEST(Player, LaunchesWithWhatItsTriggerCharged) {
  MatchScene match;
  match.ConnectAllPads();
  match.platform.SetPadAxis(0, 0, kPulled);
  match.platform.SetPadAxis(0, 5, kPulled);
  match.Run(9);
  EXPECT_EQ(CountObjects("BlueBox.png"), 1);
  EXPECT_EQ(CountObjects("bluetriangle.png"), 1);
  match.platform.SetPadAxis(0, 5, kLetGo);
  match.Run(1);
  EXPECT_NEAR(MatchScene::VelocityOf("Player1").x, 2.0f * kFrameDamping, 0.002f);
  EXPECT_EQ(CountObjects("BlueBox.png"), 0);
  ASSERT_EQ(match.log.size(), 1u);
  EXPECT_EQ(match.log[0].rfind("launch Player1 2", 0), 0u) << match.log[0];
}

// The gauge compares before it adds, so one frame may pay a step too much; later the charge stands at 10. A diagonal
// stick is longer than a straight one, and the cap works in the same update.
TEST(Player, AFullChargeStandsAtTenAndADiagonalIsCapped) {
  MatchScene match;
  match.ConnectAllPads();
  match.platform.SetPadAxis(0, 0, kPulled);
  match.platform.SetPadAxis(0, 1, -32767);
  match.platform.SetPadAxis(0, 5, kPulled);
  match.Run(60);
  match.platform.SetPadAxis(0, 5, kLetGo);
  match.Run(1);
  EXPECT_NEAR(std::stof(match.log.at(0).substr(15)), 14.142f, 0.001f);
  EXPECT_NEAR(Length(MatchScene::VelocityOf("Player1")), 13.0f * kFrameDamping, 0.01f);
}

TEST(Player, AStunDropsTheChargeWithoutALaunch) {
  MatchScene match;
  match.ConnectAllPads();
  match.platform.SetPadAxis(0, 5, kPulled);
  match.Run(5);
  ControllerOf("Player1").stunned = true;
  match.Run(1);
  EXPECT_EQ(CountObjects("BlueBox.png"), 0);
  match.platform.SetPadAxis(0, 5, kLetGo);
  match.Run(1);
  EXPECT_TRUE(match.log.empty());
  ControllerOf("Player1").stunned = false;
  match.Run(2);
  EXPECT_TRUE(match.log.empty());
}

TEST(Player, AResettingStickKeepsTheLastAim) {
  MatchScene match;
  match.ConnectAllPads();
  match.platform.SetPadAxis(0, 1, -32767);  // up
  match.Run(2);
  match.platform.SetPadAxis(0, 1, 0);
  match.platform.SetPadAxis(0, 5, kPulled);
  match.Run(9);
  match.platform.SetPadAxis(0, 5, kLetGo);
  match.Run(1);
  EXPECT_NEAR(MatchScene::VelocityOf("Player1").y, 2.0f * kFrameDamping, 0.002f);
}

// Without pads the first player waits for keys and the others are flown; a pad takes over on the next frame, and when
// it is pulled in mid-charge the pilot starts without a launch.
TEST(Player, WhoFliesDependsOnThePads) {
  MatchScene match;
  match.Run(3);
  ASSERT_EQ(match.log.size(), 3u);
  EXPECT_EQ(match.log[0].rfind("launch Player2", 0), 0u);
  EXPECT_EQ(MatchScene::VelocityOf("Player1"), Vec3{});
  match.log.clear();
  match.platform.ConnectPad(1, true);
  match.platform.SetPadAxis(1, 5, kPulled);
  match.Run(3);
  EXPECT_EQ(CountObjects("BlueBox.png"), 1);
  match.platform.ConnectPad(1, false);
  match.Run(1);
  EXPECT_EQ(CountObjects("BlueBox.png"), 0);
  EXPECT_TRUE(match.log.empty());
}

TEST(Player, KeysLaunchAtOnceOncePerPress) {
  MatchScene match;
  match.Run(2);
  match.log.clear();
  match.SetKey('d', true);
  match.Run(1);
  EXPECT_NEAR(MatchScene::VelocityOf("Player1").x, 3.0f * kFrameDamping, 0.002f);
  match.Run(3);
  EXPECT_EQ(match.log.size(), 1u);
}

TEST(Player, OutsideTheArenaItStandsInTheMiddleAgain) {
  MatchScene match;
  match.ConnectAllPads();
  GameObject& player = MatchScene::Find("Player3");
  player.GetTransform().position = {30.0f, 0.0f, 2.0f};
  BodyOf(player).velocity = {5.0f, 0.0f, 0.0f};
  match.Run(1);
  EXPECT_EQ(player.GetTransform().position, (Vec3{-4.0f, 0.0f, 0.0f}));
  EXPECT_EQ(BodyOf(player).velocity, Vec3{});
}

TEST(NewGame, BuildsTheSceneAnewAndForgetsTheOld) {
  MatchScene match;
  NewGame();
  match.Run(1);
  const std::size_t objects = Objects().GetObjects().size();
  match.Run(9);
  const std::uint32_t oldId = MatchScene::Find("Player1").id;
  match.SetKey('p', true);
  SetDemoMode(false);
  ToggleDemoMode();
  match.Run(1);
  EXPECT_EQ(Objects().GetObjects().size(), objects);
  EXPECT_NE(MatchScene::Find("Player1").id, oldId);
  EXPECT_EQ(GetPlayerObject(0), &MatchScene::Find("Player1"));
  match.Run(2);
  int launchesOfFirst = 0;
  for (const std::string& line : match.log) launchesOfFirst += line.rfind("launch Player1", 0) == 0 ? 1 : 0;
  EXPECT_EQ(launchesOfFirst, 1);
  SetDemoMode(false);
}

// While the window has no focus nothing moves and the clock stands; the HUD's sprites are off. Each loss counts.
TEST(Frame, LosingFocusFreezesTheGame) {
  MatchScene match;
  const auto focus = [&](std::uint8_t what) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = what;
    match.platform.Push(event);
  };
  match.Run(30);
  focus(SDL_WINDOWEVENT_FOCUS_LOST);
  focus(SDL_WINDOWEVENT_FOCUS_LOST);
  match.Run(1);
  const Vec3 place = MatchScene::Find("Player2").GetTransform().position;
  match.Run(10);
  EXPECT_EQ(MatchScene::Find("Player2").GetTransform().position, place);
  focus(SDL_WINDOWEVENT_FOCUS_GAINED);
  match.Run(2);
  EXPECT_TRUE(IsPaused());
  focus(SDL_WINDOWEVENT_FOCUS_GAINED);
  match.Run(2);
  EXPECT_FALSE(IsPaused());
  EXPECT_FALSE(MatchScene::Find("Player2").GetTransform().position == place);
}

// A gauge that spends a budget: another team's words do not count, and a refill reports until it is full.
TEST(ForceCurrency, SpendsAndRefillsABudget) {
  TestWorld world;
  GameObject& player = world.Add("Player2");
  GameObject& gauge = world.Add("P2Force");
  auto& hook = AddHook(player);
  std::vector<std::string> heard;
  float last = 0.0f;
  hook.onEvent = [&](const Event& event) {
    heard.emplace_back(event.name);
    if (event.name == "CurrForceEvent") last = *static_cast<const float*>(event.data);
  };
  gauge.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<ForceCurrency>(1, "Player2", 10, 0.1f));
  const auto send = [&](const char* name, int team, float amount) {
    const struct {
      int player;
      float amount;
    } payload = {team, amount};
    SendEvent("P2Force", Event(name, &payload));
  };
  send("UsedForceEvent", 0, 4.0f);
  send("UsedForceEvent", 1, 4.0f);
  send("RequestForceEvent", 0, 0.0f);
  EXPECT_TRUE(heard.empty());
  send("RequestForceEvent", 1, 0.0f);
  ASSERT_EQ(heard.size(), 1u);
  EXPECT_EQ(heard[0], "ReturnForceEvent");
  SendEvent("P2Force", Event("ResetForceEvent"));
  for (int i = 0; i < 5; ++i) gauge.Update(0.0085f);
  ASSERT_EQ(heard.size(), 5u);
  EXPECT_EQ(heard[3], "CurrForceEvent");
  EXPECT_FLOAT_EQ(last, 11.0f);
  EXPECT_EQ(heard[4], "FinishedResetEvent");
}
