#include "match/score/point_bubble.h"

#include <cmath>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/event.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_colour.h"
#include "match/score/scoring.h"
#include "physics/rigid_body.h"
#include "physics/wobbly_puller.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr float kLife = 4.0f;  // seconds
constexpr float kRestDuration = 0.3f;
constexpr float kPullDuration = 9999999.0f;  // to the end of its life
constexpr float kArrivalSquared = 0.1f;      // world units, squared
constexpr float kTurn = 2.0f * kPi;
constexpr int kLargestBubble = 2;

struct Look {
  const char* picture;
  float size;  // world units
};
constexpr Look kOnePoint = {"pointbubble1.png", 1.0f};
constexpr Look kTwoPoints = {"pointbubble2.png", 0.85f};

void CreateBubble(int value, int player, const Vec3& place, float angle, std::uint32_t creditTargetId) {
  GameObject& bubble = *Objects().GetObject(Objects().CreateObject());
  bubble.name = "APoint";
  const Look& look = value == 1 ? kOnePoint : kTwoPoints;
  bubble.GetTransform().position = place + Vec3{std::cos(angle), std::sin(angle), 0.0f};
  bubble.GetTransform().graphicsScale = {look.size, look.size, 0.0f};
  auto& sprite = bubble.Insert(std::make_unique<Sprite>());
  sprite.texturePath = look.picture;
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  SetColour255(sprite, {colour.r, colour.g, colour.b, kFullColour});
  bubble.Insert(std::make_unique<GalePhysics::RigidBody>());
  auto& scripts = bubble.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(std::make_unique<DeathTimer>(kLife));
  if (GetPlayerPuller(player) != nullptr)
    scripts.AddScript(std::make_unique<PointMovment>(value, player, angle, creditTargetId));
}

}  // namespace

void CreatePointBubbles(int points, int player, const Vec3& place, std::uint32_t creditTargetId) {
  while (points > 0) {
    const float angle = static_cast<float>(Random()) / (static_cast<float>(kRandomMax) / kTurn);
    const int value = points > kLargestBubble ? 1 + Random() % 2 : points;
    points -= value;
    CreateBubble(value, player, place, angle, creditTargetId);
  }
}

PointMovment::PointMovment(int points, int playerIndex, float angle, std::uint32_t creditTargetId)
    : value_(points),
      player_(playerIndex),
      stateStart_(Time().elapsedTime),
      launchAngle_(angle),
      creditTargetId_(creditTargetId) {}

PointMovment::~PointMovment() {
  Audio::Play(Sound::kPointBubble, Audio::kOneShot);
  const GameObject* target = Objects().GetObject(creditTargetId_);
  ScriptBox* scripts = target == nullptr ? nullptr : target->Get<ScriptBox>();
  if (scripts == nullptr) return;
  const SentPoints sent = {value_, player_};
  scripts->HandleEvent(Event(kSentPoints, &sent));
}

void PointMovment::Update(float /*step*/) {
  if (!started_) {
    started_ = true;
    const char* name = IsPlayerIndex(player_) ? kScoreObjects[static_cast<std::size_t>(player_)] : "";
    if (const GameObject* display = Objects().FindObjectByName(name)) targetId_ = display->id;
  }
  Vec3 way;
  if (const GameObject* target = Objects().GetObject(targetId_)) {
    way = target->GetTransform().position - owner->GetTransform().position;
    if (SquaredLength(way) < kArrivalSquared) {
      owner->alive = false;
      return;
    }
  }
  if (launchAngle_ != kNoAngle) way = {std::cos(launchAngle_), std::sin(launchAngle_), 0.0f};
  Fly(way);
  if (Time().elapsedTime >= stateStart_ + stateDuration_) AdvanceState();
}

void PointMovment::Fly(const Vec3& way) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  if (state_ == 0) body->velocity = Normalised(way);
  if (state_ == 1) body->velocity = {};
  if (state_ == 2) body->AddGenerator(GetPlayerPuller(player_));
}

// State 2 lasts no time, so the puller is added once.
void PointMovment::AdvanceState() {
  stateStart_ = Time().elapsedTime;
  if (state_ == 0) stateDuration_ = kRestDuration;
  if (state_ == 1) stateDuration_ = 0.0f;
  if (state_ == 2) stateDuration_ = kPullDuration;
  if (state_ < 3) ++state_;
}

void PointMovment::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("pointmovment");
  bar.Add("state duration", &stateDuration_);
  bar.EndGroup();
}
