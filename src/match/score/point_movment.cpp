#include "match/score/point_movment.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/event.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/players.h"
#include "match/score/score_displays.h"
#include "match/score/sent_points.h"
#include "physics/math/trigonometry.h"
#include "physics/rigid_body.h"
#include "physics/wobbly_puller.h"

namespace {

constexpr float kRestDuration = 0.3f;        // seconds of game time
constexpr float kPullDuration = 9999999.0f;  // to the end of its life
constexpr float kArrivalSquared = 0.1f;      // world units, squared

}  // namespace

PointMovment::PointMovment() : stateStart_(Time().elapsedTime) {}

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
  if (launchAngle_ != kNoAngle) way = {Cos(launchAngle_), Sin(launchAngle_), 0.0f};
  Fly(way);
  if (Time().elapsedTime >= stateStart_ + stateDuration_) AdvanceState();
}

void PointMovment::Fly(const Vec3& way) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  if (state_ == State::kPopping) body->velocity = Normalised(way);
  if (state_ == State::kResting) body->velocity = {};
  if (state_ == State::kHandedOver) body->AddGenerator(GetPlayerPuller(player_));
}

void PointMovment::AdvanceState() {
  stateStart_ = Time().elapsedTime;
  switch (state_) {
    case State::kPopping:
      stateDuration_ = kRestDuration;
      state_ = State::kResting;
      break;
    case State::kResting:
      stateDuration_ = 0.0f;  // so that the puller is added once
      state_ = State::kHandedOver;
      break;
    case State::kHandedOver:
      stateDuration_ = kPullDuration;
      state_ = State::kPulled;
      break;
    case State::kPulled:
      break;
  }
}

void PointMovment::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("pointmovment");
  bar.Add("state duration", &stateDuration_);
  bar.EndGroup();
}
