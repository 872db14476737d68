#include "scripts/hazards/broad_side.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/random.h"
#include "core/scene_state.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/math/trigonometry.h"
#include "scripts/hazards/cannonball.h"

namespace {

constexpr float kReadySince = 3.0f;  // game seconds before it was made that a new ship has fired last
constexpr float kHalfTurn = 180.0f;  // degrees
constexpr float kMuzzle = 1.5f;      // world units ahead of the owner's middle
constexpr float kGunPitch = 3.0f;    // world units between guns
constexpr float kShotSpeed = 1.0f;   // world units per body second

struct Side {
  bool back = true;
};

bool& FacingBack() {
  static SceneState<Side> side;
  return side->back;
}

}  // namespace

bool BroadSide::IsFacingBack() { return FacingBack(); }
void BroadSide::ResetSide() { FacingBack() = true; }

BroadSide::BroadSide() : lastVolley_(Time().elapsedTime - kReadySince) {}

void BroadSide::Update(float /*step*/) {
  if (!owner->alive) return;  // updated once more in the frame of a new game
  const float now = Time().elapsedTime;
  const float volleyStart = lastVolley_ + fireInterval;
  if (!(now > volleyStart)) return;
  if (shotsFired_ >= kShotsPerVolley) {
    EndVolley();
  } else if (now > volleyStart + shotTimer_) {
    shotTimer_ += RandomPartOf(kShotGapSpread);
    Fire();
    slot_ = -slot_;
    if (slot_ >= 0) ++slot_;
    ++shotsFired_;
  }
}

void BroadSide::EndVolley() {
  lastVolley_ = Time().elapsedTime;
  shotTimer_ = 0.0f;
  shotsFired_ = 0;
  slot_ = 0;
  FacingBack() = !FacingBack();
}

void BroadSide::Fire() const {
  const Transform& transform = owner->GetTransform();
  const float degrees = AngleAboutZ(transform.orientation) * kHalfTurn / kPi + (FacingBack() ? kHalfTurn : 0.0f);
  const float angle = degrees * kPi / kHalfTurn;
  const Vec3 ahead = {Cos(angle), Sin(angle), 0.0f};
  const Vec3 alongside = {-ahead.y, ahead.x, 0.0f};
  FireCannonball(transform.position + ahead * kMuzzle + alongside * (static_cast<float>(slot_) * kGunPitch),
                 ahead * kShotSpeed);
}

void BroadSide::Serialize(Serializer& writer) const { writer.WriteFloat("fireInterval", fireInterval); }
void BroadSide::Deserialize(Serializer& reader) { fireInterval = reader.ReadFloat(); }

void BroadSide::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("broadside"); }
