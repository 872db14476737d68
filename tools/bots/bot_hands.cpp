#include "tools/bots/bot_hands.h"

#include <algorithm>
#include <cmath>

#include "graphics/camera.h"
#include "input/gamepad.h"
#include "match/player/character_controller.h"
#include "match/players.h"
#include "tools/bots/ballistics.h"

namespace {

constexpr int kMostRaw = 32767;
constexpr float kDeadZone = 2000.0f;  // raw units of a stick
constexpr int kStickX = 0;
constexpr int kStickY = 1;
constexpr float kMouseReach = 8.0f;  // world units from the player to the cursor, where the window is wide enough
constexpr float kMouseX = 19.0f;     // half of the window, world units
constexpr float kMouseY = 10.5f;

// Control is lost while dizzy, and so is a charge.
bool IsDizzy(int player) {
  const GameObject* object = GetPlayerObject(player);
  const CharacterController* controller = object == nullptr ? nullptr : FindController(*object);
  return controller == nullptr || controller->stunned;
}

std::int16_t RawAxis(float value) {
  if (value == 0.0f) return 0;
  const float raw = std::copysign(kDeadZone, value) + value * Gamepad::kFullTilt;
  return static_cast<std::int16_t>(std::clamp(std::lround(raw), -long{kMostRaw}, long{kMostRaw}));
}

Vec3 Turned(const Vec3& v, float angle) {
  const float c = std::cos(angle);
  const float s = std::sin(angle);
  return {v.x * c - v.y * s, v.x * s + v.y * c, 0.0f};
}

// How far along the aim the cursor is still in the window.
float ReachInWindow(const Vec3& place, const Vec3& aim) {
  float reach = kMouseReach;
  if (aim.x != 0.0f) reach = std::min(reach, (std::copysign(kMouseX, aim.x) - place.x) / aim.x);
  if (aim.y != 0.0f) reach = std::min(reach, (std::copysign(kMouseY, aim.y) - place.y) / aim.y);
  return std::max(reach, 0.0f);
}

}  // namespace

float BotHands::GetCharge() const {
  return std::min(static_cast<float>(chargedFrames_) * Ballistics::kChargeAFrame, Ballistics::kFullCharge);
}

void BotHands::Move(int frame, const BotPlan& plan, ScriptedPlatform& platform) {
  if (IsDizzy(player_)) {
    Hold(false, platform);
    chargedFrames_ = 0;
    return;
  }
  if (held_) ++chargedFrames_;
  const bool ready = held_ && plan.launch && GetCharge() >= std::min(plan.strength, Ballistics::kFullCharge);
  const Vec3 aim = Turned(plan.aim, error_);
  if (plan.launch) Aim(aim, plan.from, platform);
  if (!ready) {
    if (plan.launch || plan.charge) Hold(true, platform);
    return;
  }
  Hold(false, platform);
  launchFrame_ = frame;
  launch_ = aim * GetCharge();
  chargedFrames_ = 0;
  error_ = dice_.Between(-kAimError, kAimError);
}

void BotHands::Rest(ScriptedPlatform& platform) {
  Hold(false, platform);
  chargedFrames_ = 0;
  if (mouse_) return;
  platform.SetPadAxis(player_, kStickX, 0);
  platform.SetPadAxis(player_, kStickY, 0);
}

void BotHands::Hold(bool held, ScriptedPlatform& platform) {
  if (held == held_) return;
  held_ = held;
  if (mouse_)
    platform.PushClick(SDL_BUTTON_LEFT, held);
  else
    platform.SetPadAxis(player_, Gamepad::kRightTrigger,
                        held ? std::int16_t{kMostRaw} : ScriptedPlatform::kTriggerRest);
}

void BotHands::Aim(const Vec3& aim, const Vec3& place, ScriptedPlatform& platform) const {
  if (!mouse_) {
    platform.SetPadAxis(player_, kStickX, RawAxis(aim.x));
    platform.SetPadAxis(player_, kStickY, RawAxis(-aim.y));
    return;
  }
  const Camera* camera = GetMainCamera();
  if (camera == nullptr) return;
  const Vec3 cursor = place + aim * ReachInWindow(place, aim);
  const glm::vec4 clip = camera->GetProjection() * camera->GetView() * glm::vec4(cursor.x, cursor.y, 0.0f, 1.0f);
  const WindowRect window = platform.GetWindowRect();
  platform.PushMouse(static_cast<int>((clip.x / clip.w + 1.0f) * 0.5f * static_cast<float>(window.width)),
                     static_cast<int>((1.0f - clip.y / clip.w) * 0.5f * static_cast<float>(window.height)));
}
