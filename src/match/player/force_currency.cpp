#include "match/player/force_currency.h"

#include <algorithm>
#include <utility>

#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/player/character_controller.h"
#include "match/player/force_events.h"

namespace {

constexpr float kFramesPerSecond = 60.0f;
constexpr char kUnknownTarget[] = "Errar";

// A gauge from a file does not know its player: the one whose controller names this gauge is meant.
ScriptBox* FindPlayerOf(const std::string& gaugeName) {
  for (const auto& object : Objects().GetObjects()) {
    ScriptBox* box = object->Get<ScriptBox>();
    if (box == nullptr || !object->alive) continue;
    const auto* controller = static_cast<const CharacterController*>(box->GetScript("CharacterController"));
    if (controller != nullptr && controller->GetCurrencyName() == gaugeName) return box;
  }
  return nullptr;
}

}  // namespace

ForceCurrency::ForceCurrency(int playerTeam, std::string target, int maximum, float resetTime)
    : replyTarget_(std::move(target)),
      max_(maximum),
      team_(playerTeam),
      current_(static_cast<float>(maximum)),
      resetSpeed_(resetTime) {}

void ForceCurrency::Initialize() {
  const Transform& transform = owner->GetTransform();
  startY_ = transform.position.y;
  startScaleY_ = transform.graphicsScale.y;
  const auto maximum = static_cast<float>(max_);
  // Full in a frame at the most: a tiny reset time would leave the finite numbers.
  fillPerFrame_ = resetSpeed_ > 0.0f ? std::min(maximum / resetSpeed_ / kFramesPerSecond, maximum) : maximum;
}

// After a new game has begun the old one's gauges live on to the end of the frame, and would speak to the new player.
void ForceCurrency::Update(float /*step*/) {
  if (!owner->alive) return;
  if (filling_) Fill();
  ShowGauge();
}

// Compares before it adds, so one report may lie a step above the maximum; the next frame corrects it silently.
void ForceCurrency::Fill() {
  const auto maximum = static_cast<float>(max_);
  if (maximum > current_) {
    current_ += fillPerFrame_;
    Reply(Event(ForceEvents::kCurrent, &current_));
    return;
  }
  filling_ = false;
  current_ = maximum;
  if (!chargeRules_) Reply(Event(ForceEvents::kFinishedReset));
}

// The gauge itself is never seen: the player shows the charge bar. Its size still tells the charge.
void ForceCurrency::ShowGauge() {
  if (Sprite* sprite = owner->Get<Sprite>()) sprite->r = sprite->g = sprite->b = sprite->a = 0.0f;
  if (max_ <= 0) return;
  const auto maximum = static_cast<float>(max_);
  Transform& transform = owner->GetTransform();
  transform.position.y = startY_ - (maximum - current_) / maximum * startScaleY_ * 0.25f;
  transform.graphicsScale.y = current_ / maximum * startScaleY_ * 0.5f;
}

void ForceCurrency::HandleEvent(const Event& event) {
  using namespace ForceEvents;
  if (event.name == kRequest) {
    const int* player = Payload<int>(event);
    if (player == nullptr || *player != team_) return;
    const PlayerAmount answer = {team_, current_};
    Reply(Event(kReturn, &answer));
  } else if (event.name == kUsed) {
    const auto* used = Payload<PlayerAmount>(event);
    if (used != nullptr && used->player == team_) current_ -= used->amount;
  } else if (event.name == kReset) {
    filling_ = true;
  } else if (event.name == kSetCharge) {
    chargeRules_ = true;
    current_ = 0.0f;
  } else if (event.name == kStartCharge) {
    filling_ = true;
    current_ = 0.0f;
  } else if (event.name == kLaunch) {
    Reply(Event(kFire, &current_));
    current_ = 0.0f;
    filling_ = false;
  }
}

void ForceCurrency::Reply(const Event& event) const {
  if (replyTarget_ != kUnknownTarget)
    SendEvent(replyTarget_, event);
  else if (ScriptBox* box = FindPlayerOf(owner->name))
    box->HandleEvent(event);
}

void ForceCurrency::Serialize(Serializer& writer) const {
  writer.WriteInt("Team", team_);
  writer.WriteInt("Max", max_);
  writer.WriteFloat("ResetSpeed", resetSpeed_);
  writer.WriteBool("ChargeRules", chargeRules_);
}

void ForceCurrency::Deserialize(Serializer& reader) {
  team_ = reader.ReadInt();
  max_ = reader.ReadInt();
  resetSpeed_ = reader.ReadFloat();
  chargeRules_ = reader.ReadBool();
}
