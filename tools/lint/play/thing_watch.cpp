#include "tools/lint/play/thing_watch.h"

#include <algorithm>
#include <cmath>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "lint/number.h"
#include "match/score/give_points.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"
#include "scripts/props/death_timer.h"
#include "tools/lint/play/play_notes.h"

namespace {

constexpr float kRestTime = 0.25f;   // game seconds
constexpr float kRestSpeed = 0.05f;  // units per body second, and radians
constexpr float kLongEnough = 5.0f;  // game seconds in which everything should have rested once
constexpr float kWallX = 15.0f;      // world units, at the walls' inner faces
constexpr float kWallY = 10.0f;
constexpr float kBeyond = 1.5f;  // behind them

bool IsInside(const Vec3& place, float margin) {
  return std::abs(place.x) < kWallX + margin && std::abs(place.y) < kWallY + margin;
}

bool IsBroken(const GameObject& object) {
  const auto* prize = object.Get<GivePoints>();
  return prize != nullptr && prize->IsBroken();
}

// Whether it is a solid that forces move, and none that comes and goes by itself, as spawned things do that have their
// time. What stands fast at first goes later where its script wants it.
bool IsToStay(const GameObject& object, bool ofFile) {
  const auto* body = object.Get<GalePhysics::RigidBody>();
  const GalePhysics::Collider* collider = GalePhysics::FindCollider(object);
  if (collider == nullptr || collider->ghost || body->inverseMass == 0.0f) return false;
  return ofFile || FindDeathTimer(object) == nullptr;
}

// The empty object whose name tells a level's duration.
bool IsDurationMark(const GameObject& object) {
  float duration = 0.0f;
  return ParsesWhole(object.name, duration);
}

bool IsAtRest(const GalePhysics::RigidBody& body) {
  return SquaredLength(body.velocity) < kRestSpeed * kRestSpeed &&
         SquaredLength(body.angularVelocity) < kRestSpeed * kRestSpeed;
}

}  // namespace

void ThingWatch::Begin(int turn) {
  turn_ = turn;
  began_ = living_ = most_ = cast_.CountLiving();
  things_.clear();
  strays_.clear();
  const std::size_t count = cast_.GetLevel() == nullptr ? 0 : cast_.GetLevel()->objects.size();
  hits_.assign(count, 0);
  touches_.assign(count, 0);
}

void ThingWatch::EndFrame() {
  living_ = 0;
  for (const auto& object : Objects().GetObjects()) {
    const int index = cast_.IndexOf(object->id);
    if (index == PieceCast::kNobody || !object->alive) continue;
    ++living_;
    Look(*object, index);
  }
  most_ = std::max(most_, living_);
}

void ThingWatch::Look(const GameObject& object, int index) {
  const auto* body = object.Get<GalePhysics::RigidBody>();
  if (body == nullptr || IsBroken(object) || strays_.contains(object.id)) return;
  const auto [found, isNew] =
      things_.try_emplace(object.id, Thing{.index = index, .since = Time().elapsedTime, .gonePlace = {}});
  if (isNew && !IsToStay(object, cast_.IsOfFile(object.id))) {
    strays_.insert(object.id);
    things_.erase(found);
    return;
  }
  Thing& thing = found->second;
  if (isNew && cast_.IsOfFile(object.id)) thing.inside = IsInside(cast_.PlaceInFile(index), 0.0f);
  thing.still = IsAtRest(*body) ? thing.still + Time().frameStep : 0.0f;
  if (thing.still >= kRestTime) thing.rested = true;
  const Vec3& place = object.GetTransform().position;
  if (IsInside(place, 0.0f)) thing.inside = true;
  if (!thing.inside || thing.gone || IsInside(place, kBeyond)) return;
  thing.gone = true;
  thing.gonePlace = place;
}

void ThingWatch::OnTouch(std::uint32_t id, bool byPlayer) {
  const int index = cast_.IndexOf(id);
  if (index == PieceCast::kNobody || static_cast<std::size_t>(index) >= touches_.size()) return;
  ++touches_[static_cast<std::size_t>(index)];
  if (byPlayer) ++hits_[static_cast<std::size_t>(index)];
}

void ThingWatch::End(std::string& text) {
  const float now = Time().elapsedTime;
  for (const auto& [id, thing] : things_) {
    if (thing.gone) WriteNote(text, {NoteKind::kGone, turn_, thing.index, {thing.gonePlace.x, thing.gonePlace.y}});
    if (cast_.IsOfFile(id) && (thing.rested || now - thing.since >= kLongEnough))
      WriteNote(text, {NoteKind::kRested, turn_, thing.index, {thing.rested ? 1.0 : 0.0}});
  }
  for (std::size_t i = 0; i < touches_.size(); ++i) {
    const int index = static_cast<int>(i);
    if (touches_[i] > 0) WriteNote(text, {NoteKind::kTouched, turn_, index, {double(touches_[i])}});
    if (cast_.GetLevel()->objects[i].Find("GivePoints") != nullptr)
      WriteNote(text, {NoteKind::kPrize, turn_, index, {double(hits_[i])}});
  }
  WriteNote(text, {NoteKind::kMany, turn_, cast_.FindMostProductive(), {double(began_), double(most_)}});
}

void ThingWatch::EndLater(std::string& text) const {
  int count = 0;
  int index = PieceCast::kNobody;
  for (const auto& object : Objects().GetObjects()) {
    if (cast_.IndexOf(object->id) == PieceCast::kNobody || !object->alive || IsBroken(*object)) continue;
    if (FindDeathTimer(*object) != nullptr || IsDurationMark(*object)) continue;
    ++count;
    index = cast_.IndexOf(object->id);
  }
  if (count > 0) WriteNote(text, {NoteKind::kLater, turn_, index, {double(count)}});
}
