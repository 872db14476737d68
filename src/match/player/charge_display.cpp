// The charge step of CharacterController, with the bar and arrow that show it.
#include <algorithm>
#include <cmath>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/player/character_controller.h"
#include "match/player/force_events.h"
#include "match/players.h"

namespace {

constexpr float kBarLength = 0.5f;  // world units per unit of charge
constexpr float kBarWidth = 0.5f;
constexpr float kBarBehind = 0.002f;  // how far the bar lies under its player
constexpr float kArrowGap = 0.1f;     // from the bar's end to the arrow
constexpr float kArrowDepth = -0.1f;

std::uint32_t MakeTinted(const char* texture, int player) {
  const std::uint32_t id = Objects().CreateObject();
  auto& sprite = Objects().GetObject(id)->Insert(std::make_unique<Sprite>());
  sprite.texturePath = texture;
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  const auto channel = [](float value) { return std::clamp(value, 0.0f, 255.0f) / 255.0f; };
  sprite.r = channel(colour.r);
  sprite.g = channel(colour.g);
  sprite.b = channel(colour.b);
  return id;
}

void KillAndForget(std::uint32_t& id) {
  if (GameObject* object = Objects().GetObject(id)) object->alive = false;
  id = 0;
}

}  // namespace

void CharacterController::FlyByCharge(const Gamepad& pad) {
  if (pad.IsTriggerHeld()) {
    if (!charging_) BeginCharge();
    ShowCharge();
    return;
  }
  if (charging_) ReleaseCharge();
  charging_ = false;
}

void CharacterController::BeginCharge() {
  Audio::StartCharge(controller_);
  chargeBarId_ = MakeTinted("BlueBox.png", controller_);
  chargeArrowId_ = MakeTinted("bluetriangle.png", controller_);
  SendEvent(currencyName_, Event(ForceEvents::kStartCharge));
  force_ = 0.0f;
  charging_ = true;
}

void CharacterController::ShowCharge() {
  const float angle = std::atan2(aim_.y, aim_.x);
  aim_ = Normalised(aim_);
  const Vec3 place = owner->GetTransform().position;
  if (const GameObject* bar = Objects().GetObject(chargeBarId_)) {
    Transform& transform = bar->GetTransform();
    transform.orientation = QuaternionFromZ(angle);
    transform.position = place + aim_ * (0.5f * kBarLength * force_);
    transform.position.z -= kBarBehind;
    transform.graphicsScale.x = kBarLength * force_;
    transform.graphicsScale.y = kBarWidth;
  }
  if (const GameObject* arrow = Objects().GetObject(chargeArrowId_)) {
    const float reach = kBarLength * force_ + kArrowGap;
    Transform& transform = arrow->GetTransform();
    transform.orientation = QuaternionFromZ(angle - kPi / 2.0f);
    transform.position = {place.x + aim_.x * reach, place.y + aim_.y * reach, kArrowDepth};
  }
}

// The launch goes along the stick as it is in this frame: the gauge's answer comes inside the call.
void CharacterController::ReleaseCharge() {
  Audio::StopCharge(controller_);
  Audio::Play(Sound::kRelease, Audio::kOneShot);
  DropCharge();
  SendEvent(currencyName_, Event(ForceEvents::kLaunch));
}

void CharacterController::DropCharge() {
  KillAndForget(chargeBarId_);
  KillAndForget(chargeArrowId_);
}
