#include "match/whale/barnacle_logic.h"

#include <utility>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/score/point_earner.h"
#include "match/whale/make_a_whale.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"
#include "scripts/fast_player.h"

namespace {
constexpr Vec3 kFall = {0.0f, -2.0f, 0.0f};  // units per body second squared
constexpr float kLooseInverseMass = 2.0f;
}  // namespace

// The whale is still in the middle when it is found, and on its course an update later: only then is there a barnacle.
void BarnacleLogic::Update(float /*step*/) {
  if (!started_) {
    LookForWhale();
    Show(false);
    waiting_ = true;
    if (!started_) return;
  } else {
    Show(true);
    waiting_ = false;
  }
  const GameObject* whale = Objects().GetObject(whaleId_);
  if (whale == nullptr || !whale->alive)
    owner->alive = false;
  else if (!detached_)
    owner->GetTransform().position = whale->GetTransform().position + offset_;
}

bool BarnacleLogic::Sits() const { return started_ && !detached_ && Objects().GetObject(whaleId_) != nullptr; }

void BarnacleLogic::LookForWhale() {
  const GameObject* whale = Objects().FindObjectByName(kWhaleName);
  if (whale == nullptr) return;
  started_ = true;
  whaleId_ = whale->id;
  offset_ = owner->GetTransform().position;
}

void BarnacleLogic::Show(bool shown) const {
  if (Sprite* sprite = owner->Get<Sprite>()) sprite->visible = shown;
  if (GalePhysics::Collider* collider = GalePhysics::FindCollider(*owner)) collider->ghost = !shown;
}

// Its own place is the one on a whale in mid-stage.
void BarnacleLogic::GiveBack() {
  if (waiting_) Show(true);
  if (!Sits()) return;
  seat_ = std::exchange(owner->GetTransform().position, offset_);
  owner->GetTransform().Rebuild();
}

void BarnacleLogic::TakeAgain() {
  if (waiting_) Show(false);
  if (!Sits()) return;
  owner->GetTransform().position = seat_;
  owner->GetTransform().Rebuild();
}

void BarnacleLogic::OnContact(const GalePhysics::Contact& contact) {
  if (!owner->alive || !started_ || detached_ || !IsFirstPlayerFast(contact)) return;
  if (IsPlayerName(contact.secondOwner->name)) TakeHit(contact);
}

void BarnacleLogic::TakeHit(const GalePhysics::Contact& contact) {
  Audio::Play(Sound::kBarnacle, Audio::kOneShot);
  --hits_;
  if (PointEarner* player = FindPointEarner(*contact.secondOwner)) player->AddPoints(kPoints, {});
  const GameObject* whale = Objects().GetObject(whaleId_);
  ScriptBox* scripts = whale == nullptr ? nullptr : whale->Get<ScriptBox>();
  if (Script* health = scripts == nullptr ? nullptr : scripts->GetScript("bosshealth")) health->OnContact(contact);
  if (hits_ < 1) DropOff();
}

void BarnacleLogic::DropOff() {
  detached_ = true;
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  body->acceleration = kFall;
  body->inverseMass = kLooseInverseMass;
}
