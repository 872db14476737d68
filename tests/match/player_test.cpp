#include <gtest/gtest.h>

#include <utility>

#include "core/event.h"
#include "core/script_box.h"
#include "input/input.h"
#include "match/player/character_controller.h"
#include "match/player/force_currency.h"
#include "match/player/force_events.h"
#include "match_scene.h"

namespace {

constexpr std::int16_t kPulled = 32767;
constexpr std::int16_t kLetGo = -32768;
constexpr float kFrameDamping = 0.97772f;  // √0.997 to the power of 15 sub-steps

class PlayerTest : public MatchScene, public ::testing::Test {
 public:
  using MatchScene::Run;

  void Tilt(std::int16_t x, std::int16_t y) {
    platform.SetPadAxis(0, 0, x);
    platform.SetPadAxis(0, 1, y);
  }
  void SetTrigger(int pad, std::int16_t value, int frames) {
    platform.SetPadAxis(pad, 5, value);
    Run(frames);
  }
  /// The bars and arrows of all charges.
  static std::size_t CountChargePictures() {
    return FindPictures("BlueBox.png").size() + FindPictures("bluetriangle.png").size();
  }
  /// How often that player was launched since the last call.
  int TakeLaunches(const std::string& player) {
    int launches = 0;
    for (const std::string& line : std::exchange(log, {})) launches += line.starts_with("launch " + player) ? 1 : 0;
    return launches;
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
  SetTrigger(0, kPulled, 9);
  EXPECT_EQ(CountChargePictures(), 2u);
  SetTrigger(0, kLetGo, 1);
  EXPECT_EQ(CountChargePictures(), 0u);
  EXPECT_NEAR(VelocityOf("Player1").x, 2.0f * kFrameDamping, 0.002f);
  Tilt(0, -32767);  // up
  Run(2);
  Tilt(0, 0);
  SetTrigger(0, kPulled, 9);
  SetTrigger(0, kLetGo, 1);
  EXPECT_NEAR(VelocityOf("Player1").y, 2.0f * kFrameDamping, 0.002f);
  Tilt(kPulled, -32767);
  SetTrigger(0, kPulled, 60);
  PositionOf(Find("Player1")) = {-2.0f, 2.0f, 0.0f};  // away from walls
  SetTrigger(0, kLetGo, 1);
  EXPECT_NEAR(Length(VelocityOf("Player1")), 13.0f * kFrameDamping, 0.01f);
  ASSERT_EQ(log.size(), 3u);
  EXPECT_TRUE(log[0].starts_with("launch Player1 2")) << log[0];
  EXPECT_NEAR(std::stof(log[2].substr(15)), 14.142f, 0.001f);
}

// Without pads the first player waits for keys, which launch at once and once a press, and the others are flown; a pad
// takes over on the next frame, and when it is pulled in mid-charge the pilot starts without a launch, as a stun does.
TEST_F(PlayerTest, WhoFliesDependsOnThePadsAndAStunDropsTheCharge) {
  Run(3);
  EXPECT_EQ(log.size(), 3u);
  EXPECT_EQ(TakeLaunches("Player1"), 0);
  EXPECT_EQ(VelocityOf("Player1"), Vec3{});
  SetKey('d', true);
  Run(1);
  EXPECT_NEAR(VelocityOf("Player1").x, 3.0f * kFrameDamping, 0.002f);
  Run(3);
  EXPECT_EQ(TakeLaunches("Player1"), 1);
  for (const bool down : {true, false}) {
    SetKey('r', down);  // a refill, for which a player that charges does not wait
    SetKey('d', !down);
    Run(2);
  }
  EXPECT_EQ(TakeLaunches("Player1"), 1);
  for (const bool stunned : {false, true}) {
    platform.ConnectPad(1, true);
    SetTrigger(1, kPulled, 3);
    EXPECT_EQ(CountChargePictures(), 2u);
    FindController(Find("Player2"))->stunned = stunned;
    platform.ConnectPad(1, stunned);
    Run(1);
    EXPECT_EQ(CountChargePictures(), 0u);
  }
  SetTrigger(1, kLetGo, 1);
  FindController(Find("Player2"))->stunned = false;
  Run(2);
  EXPECT_EQ(TakeLaunches("Player2"), 0);
}

// From its first press on the mouse aims and charges; keys hop beside it as they did, and a pad takes the seat from a
// mouse that charges. With the editor's bars shown a press is theirs.
TEST_F(PlayerTest, WithoutAPadTheMouseIsTheFirstSeat) {
  Input::EnableMouse();
  PositionOf(Find("Player1")) = {};
  platform.PushMouse(640, 100);  // straight above the middle
  Run(2);
  EXPECT_TRUE(FindPictures("aimmark.png").empty());
  platform.PushClick(SDL_BUTTON_LEFT, true);
  Run(18);
  EXPECT_EQ(CountChargePictures(), 2u);
  EXPECT_EQ(FindPictures("aimmark.png").size(), 1u);
  platform.PushClick(SDL_BUTTON_LEFT, false);
  Run(1);
  EXPECT_NEAR(VelocityOf("Player1").y, 4.0f * kFrameDamping, 0.01f);
  EXPECT_NEAR(VelocityOf("Player1").x, 0.0f, 0.1f);
  SetKey('d', true);
  Run(1);
  EXPECT_NEAR(VelocityOf("Player1").x, 3.0f * kFrameDamping, 0.002f);
  EXPECT_EQ(TakeLaunches("Player1"), 2);
  platform.PushClick(SDL_BUTTON_LEFT, true);
  Run(3);
  platform.ConnectPad(0, true);
  Run(3);
  EXPECT_EQ(CountChargePictures() + FindPictures("aimmark.png").size(), 0u);
  platform.ConnectPad(0, false);
  platform.PushClick(SDL_BUTTON_LEFT, false);
  Run(1);
  Input::GetPointer().onBars = true;
  platform.PushClick(SDL_BUTTON_LEFT, true);
  Run(3);
  EXPECT_EQ(CountChargePictures() + FindPictures("aimmark.png").size(), 0u);
  EXPECT_EQ(TakeLaunches("Player1"), 0);
  Input::Reset();
}

// The dead players are updated once more beside the new ones, and must not act.
TEST_F(PlayerTest, ANewGameBuildsTheSceneAnewAndForgetsTheOld) {
  Run(3);
  NewGame();
  SetKey('d', true);
  Run(1);
  EXPECT_EQ(TakeLaunches("Player1"), 1);
  const std::size_t objects = Objects().GetObjects().size();
  Run(9);
  const std::uint32_t oldId = Find("Player1").id;
  ToggleDemoMode();
  Run(1);
  EXPECT_EQ(Objects().GetObjects().size(), objects);
  EXPECT_NE(Find("Player1").id, oldId);
  EXPECT_EQ(GetPlayerObject(0), &Find("Player1"));
  Run(2);
  EXPECT_EQ(TakeLaunches("Player1"), 1);
  SetDemoMode(false);
}

// While the window has no focus nothing moves. Each loss counts.
TEST_F(PlayerTest, LosingFocusFreezesTheGame) {
  const auto standsStillAfter = [&](SDL_WindowEventID change) {
    SDL_Event event{};
    event.type = SDL_WINDOWEVENT;
    event.window.event = static_cast<Uint8>(change);
    platform.Push(event);
    Run(10);
    const Vec3 place = PositionOf(Find("Player2"));
    Run(10);
    return PositionOf(Find("Player2")) == place;
  };
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(standsStillAfter(SDL_WINDOWEVENT_FOCUS_LOST));
  EXPECT_TRUE(standsStillAfter(SDL_WINDOWEVENT_FOCUS_GAINED));
  EXPECT_FALSE(standsStillAfter(SDL_WINDOWEVENT_FOCUS_GAINED));
}

// A gauge that spends a budget: another team's words do not count, and a refill reports until it is full.
TEST(ForceCurrency, SpendsAndRefillsABudget) {
  TestWorld world;
  std::string heard;
  float last = 0.0f;
  AddHook(world.Add("Player2")).onEvent = [&](const Event& event) {
    heard += std::string(event.name) + " ";
    if (event.name == ForceEvents::kCurrent) last = *static_cast<const float*>(event.data);
  };
  auto& scripts = world.Add("P2Force").Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(std::make_unique<ForceCurrency>(1, "Player2", 10, 0.1f));
  for (const int team : {0, 1}) {
    const ForceEvents::PlayerAmount used = {team, 4.0f};
    SendEvent("P2Force", Event(ForceEvents::kUsed, &used));
    SendEvent("P2Force", Event(ForceEvents::kRequest, &team));
    EXPECT_EQ(heard, team == 0 ? "" : "ReturnForceEvent ");
  }
  SendEvent("P2Force", Event(ForceEvents::kReset));
  for (int i = 0; i < 5; ++i) scripts.Update(0.0085f);
  EXPECT_EQ(heard, "ReturnForceEvent CurrForceEvent CurrForceEvent CurrForceEvent FinishedResetEvent ");
  EXPECT_FLOAT_EQ(last, 11.0f);
}
