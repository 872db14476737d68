#include "match/score/give_points.h"

#include <algorithm>
#include <limits>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/random.h"
#include "core/serializer.h"
#include "match/score/point_earner.h"
#include "physics/collider.h"
#include "physics/math/trigonometry.h"
#include "physics/rigid_body.h"
#include "scripts/fast_player.h"

namespace {

constexpr float kExitSpeed = 10.0f;  // units per body second
constexpr float kExitSpin = 10.0f;   // radians per body second
constexpr float kExitTime = 3.0f;    // game seconds from breaking to removal
constexpr float kAtRestSquared = 0.00001f;

Vec3 RandomDirection() {
  const float degrees = RandomUpTo(360.0f);
  const float angle = degrees * kPi / 180.0f;
  return {Cos(angle), Sin(angle), 0.0f};
}

int ReadClamped(Serializer& reader, const char* what, int most) {
  const int value = reader.ReadInt();
  const int clamped = std::clamp(value, 0, most);
  if (clamped != value) Print("%s: %s %d, taken as %d\n", reader.Where().c_str(), what, value, clamped);
  return clamped;
}

}  // namespace

void GivePoints::OnContact(const GalePhysics::Contact& contact) {
  // A broken thing may still stand in the contact list of its last sub-step.
  if (broken_ || !owner->alive || !IsFirstPlayerFast(contact)) return;
  TakeHit();
  if (!IsPlayerName(contact.secondOwner->name)) return;
  if (PointEarner* player = FindPointEarner(*contact.secondOwner)) player->AddPoints(chest ? 1 : pointsGiven, {});
}

void GivePoints::TakeHit() {
  if (chest && hitsToBreak == 3) Audio::Play(Sound::kPufferPuff1, Audio::kOneShot);
  if (chest && hitsToBreak == 2) Audio::Play(Sound::kPufferPuff2, Audio::kOneShot);
  if (hitsToBreak == 1) chest = false;
  if (hitsToBreak == 0 || --hitsToBreak > 0) return;
  Audio::Play(Sound::kPufferExhale, Audio::kOneShot);
  Break();
}

void GivePoints::Break() {
  if (broken_) return;
  broken_ = true;
  breakTime_ = Time().elapsedTime;
  for (const Kind kind : {Kind::kSphereCollider, Kind::kBoxCollider, Kind::kPrimitiveAssemblage})
    if (Component* collider = owner->GetComponent(kind)) static_cast<GalePhysics::Collider*>(collider)->ghost = true;
}

void GivePoints::Update(float /*step*/) {
  if (!broken_) return;
  if (auto* body = owner->Get<GalePhysics::RigidBody>()) {
    if (SquaredLength(body->velocity) <= kAtRestSquared) body->velocity = RandomDirection();
    body->velocity = Normalised(body->velocity) * kExitSpeed;
    body->damping = 1.0f;
    body->angularVelocity = {0.0f, 0.0f, kExitSpin};
  }
  if (Time().elapsedTime >= breakTime_ + kExitTime) owner->alive = false;
}

void GivePoints::Serialize(Serializer& writer) {
  writer.BeginComponent("GivePoints");
  writer.WriteInt("PointsGiven", pointsGiven);
  writer.WriteInt("Hits To Break", hitsToBreak);
  writer.WriteBool("Is Treasure Chest", chest);
  writer.EndBlock();
}

void GivePoints::Deserialize(Serializer& reader) {
  pointsGiven = ReadClamped(reader, "PointsGiven", kMostPoints);
  hitsToBreak = ReadClamped(reader, "Hits To Break", std::numeric_limits<int>::max());
  chest = reader.ReadBool();
}

void GivePoints::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("GivePoints");
  bar.AddLimited("Points Given", &pointsGiven, 0, kMostPoints);
  bar.AddLimited("Hits To Break", &hitsToBreak, 0, std::numeric_limits<int>::max());
  bar.Add("Is Treasure Chest", &chest);
  bar.EndGroup();
}

void RemovePrizes() {
  for (const auto& object : Objects().GetObjects())
    if (!object->core && object->Get<GivePoints>() != nullptr) object->alive = false;
}
