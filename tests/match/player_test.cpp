#include <gtest/gtest.h>

#include <algorithm>

#include "core/event.h"
#include "core/pause.h"
#include "core/script_box.h"
#include "graphics/sprite.h"
#include "match/character_controller.h"
#include "match/force_currency.h"
#include "match/force_events.h"
#include "match_scene.h"

namespace {

constexpr std::int16_t kPulled = 32767;
constexpr std::int16_t kLetGo = -32768;
constexpr int kTrigger = 5;
constexpr float kFrameDamping = 0.97772f;  // √0.997 to the power of 15 sub-steps

class PlayerTest : public MatchScene, public ::testing::Test {
 public:
  using MatchScene::Run;

  void Tilt(std::int16_t x, std::int16_t y) {
    platform.SetPadAxis(0, 0, x);
    platform.SetPadAxis(0, 1, y);
  }
  void Charge(int frames) {
    platform.SetPadAxis(0, kTrigger, kPulled);
    Run(frames);
  }
  void Launch() {
    platform.SetPadAxis(0, kTrigger, kLetGo);
    Run(1);
  }
  void SendFocus(std::uint8_t change) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = change;
    platform.Push(event);
  }
  static int CountPictures(std::string_view picture) {
    int count = 0;
    for (const auto& object : Objects().GetObjects()) {
      const Sprite* sprite = object->Get<Sprite>();
      count += object->alive && sprite != nullptr && sprite->texturePath == picture ? 1 : 0;
    }
    return count;
  }
};

}  // namespace

// A held trigger pays 10/45 a frame, also for the frame of the press, and the launch goes along the stick or, when
// that is back in its middle, where it pointed last. The gauge compares before it adds, so one frame may pay a step too
// much; later the charge stands at 10. A diagonal stick is longer than a straight one, and the cap works in the same
// update.
TEST_F(PlayerTest, LaunchesWithWhatItsTriggerChargedUpToALimit) {
  ConnectAllPads();
  Tilt(kPulled, 0);
  Charge(9);
  EXPECT_EQ(CountPictures("BlueBox.png"), 1);
  EXPECT_EQ(CountPictures("bluetriangle.png"), 1);
  Launch();
  EXPECT_NEAR(VelocityOf("Player1").x, 2.0f * kFrameDamping, 0.002f);
  EXPECT_EQ(CountPictures("BlueBox.png"), 0);
  ASSERT_EQ(log.size(), 1u);
  EXPECT_TRUE(log[0].starts_with("launch Player1 2")) << log[0];
  Tilt(0, -32767);  // up
  Run(2);
  Tilt(0, 0);
  Charge(9);
  Launch();
  EXPECT_NEAR(VelocityOf("Player1").y, 2.0f * kFrameDamping, 0.002f);
  Tilt(kPulled, -32767);
  Charge(60);
  PositionOf(Find("Player1")) = {-2.0f, 2.0f, 0.0f};  // away from walls
  Launch();
  EXPECT_NEAR(std::stof(log.at(2).substr(15)), 14.142f, 0.001f);
  EXPECT_NEAR(Length(VelocityOf("Player1")), 13.0f * kFrameDamping, 0.01f);
}

TEST_F(PlayerTest, AStunDropsTheChargeWithoutALaunch) {
  ConnectAllPads();
  Charge(5);
  CharacterController& controller = *FindController(Find("Player1"));
  controller.stunned = true;
  Run(1);
  EXPECT_EQ(CountPictures("BlueBox.png"), 0);
  Launch();
  controller.stunned = false;
  Run(2);
  EXPECT_TRUE(log.empty());
}

// Without pads the first player waits for keys, which launch at once and once a press, and the others are flown; a pad
// takes over on the next frame, and when it is pulled in mid-charge the pilot starts without a launch.
TEST_F(PlayerTest, WhoFliesDependsOnThePads) {
  Run(3);
  ASSERT_EQ(log.size(), 3u);
  EXPECT_TRUE(log[0].starts_with("launch Player2"));
  EXPECT_EQ(VelocityOf("Player1"), Vec3{});
  log.clear();
  SetKey('d', true);
  Run(1);
  EXPECT_NEAR(VelocityOf("Player1").x, 3.0f * kFrameDamping, 0.002f);
  Run(3);
  EXPECT_EQ(log.size(), 1u);
  log.clear();
  platform.ConnectPad(1, true);
  platform.SetPadAxis(1, kTrigger, kPulled);
  Run(3);
  EXPECT_EQ(CountPictures("BlueBox.png"), 1);
  platform.ConnectPad(1, false);
  Run(1);
  EXPECT_EQ(CountPictures("BlueBox.png"), 0);
  EXPECT_TRUE(log.empty());
}

// The dead players are updated once more beside the new ones, and must not act.
TEST_F(PlayerTest, ANewGameBuildsTheSceneAnewAndForgetsTheOld) {
  const auto countLaunches = [&] {
    return std::count_if(log.begin(), log.end(), [](auto& line) { return line.starts_with("launch Player1"); });
  };
  Run(3);
  NewGame();
  SetKey('d', true);
  Run(1);
  EXPECT_EQ(countLaunches(), 1);
  log.clear();
  const std::size_t objects = Objects().GetObjects().size();
  Run(9);
  const std::uint32_t oldId = Find("Player1").id;
  ToggleDemoMode();
  Run(1);
  EXPECT_EQ(Objects().GetObjects().size(), objects);
  EXPECT_NE(Find("Player1").id, oldId);
  EXPECT_EQ(GetPlayerObject(0), &Find("Player1"));
  Run(2);
  EXPECT_EQ(countLaunches(), 1);
  SetDemoMode(false);
}

// While the window has no focus nothing moves and the clock stands; the HUD's sprites are off. Each loss counts.
TEST_F(PlayerTest, LosingFocusFreezesTheGame) {
  Run(30);
  SendFocus(SDL_WINDOWEVENT_FOCUS_LOST);
  SendFocus(SDL_WINDOWEVENT_FOCUS_LOST);
  Run(1);
  const Vec3 place = PositionOf(Find("Player2"));
  Run(10);
  EXPECT_EQ(PositionOf(Find("Player2")), place);
  for (const bool stillPaused : {true, false}) {
    SendFocus(SDL_WINDOWEVENT_FOCUS_GAINED);
    Run(2);
    EXPECT_EQ(IsPaused(), stillPaused);
  }
  EXPECT_FALSE(PositionOf(Find("Player2")) == place);
}

// A gauge that spends a budget: another team's words do not count, and a refill reports until it is full.
TEST(ForceCurrency, SpendsAndRefillsABudget) {
  TestWorld world;
  GameObject& gauge = world.Add("P2Force");
  std::string heard;
  float last = 0.0f;
  AddHook(world.Add("Player2")).onEvent = [&](const Event& event) {
    heard += std::string(event.name) + " ";
    if (event.name == ForceEvents::kCurrent) last = *static_cast<const float*>(event.data);
  };
  gauge.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<ForceCurrency>(1, "Player2", 10, 0.1f));
  const auto send = [](const char* name, int team, float amount = 0.0f) {
    const ForceEvents::PlayerAmount payload = {team, amount};
    SendEvent("P2Force", Event(name, &payload));
  };
  for (const int team : {0, 1}) send(ForceEvents::kUsed, team, 4.0f);
  send(ForceEvents::kRequest, 0);
  EXPECT_EQ(heard, "");
  send(ForceEvents::kRequest, 1);
  SendEvent("P2Force", Event(ForceEvents::kReset));
  for (int i = 0; i < 5; ++i) gauge.Update(0.0085f);
  EXPECT_EQ(heard, "ReturnForceEvent CurrForceEvent CurrForceEvent CurrForceEvent FinishedResetEvent ");
  EXPECT_FLOAT_EQ(last, 11.0f);
}
