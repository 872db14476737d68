#include "match/rules/get_the_crown.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "match/players.h"
#include "match/score/point_earner.h"
#include "match/score/ranking.h"
#include "scripts/archetype.h"
#include "scripts/fast_player.h"

namespace {

constexpr Vec3 kAboveHolder = {0.0f, 1.0f, 0.0f};
constexpr float kPayPause = 1.0f;  // seconds of game time
constexpr int kPay = 3;
constexpr int kFinalBonus = 4;

}  // namespace

void GetTheCrown::Begin() {
  Objective::Begin();
  holder_ = kNobody;
  holdTime_ = 0.0f;
  takenThisFrame_ = false;
  const GameObject* crown = CreateFromArchetype("starsonfish");
  crownId_ = crown == nullptr ? 0 : crown->id;
  if (Objects().FindObjectByName("ScoreText") == nullptr) return;
  holder_ = RankPlayers().back().player;
  PlaceCrown();
}

void GetTheCrown::PlaceCrown() const {
  GameObject* crown = Objects().GetObject(crownId_);
  const GameObject* holder = GetPlayerObject(holder_);
  if (crown != nullptr && holder != nullptr)
    crown->GetTransform().position = holder->GetTransform().position + kAboveHolder;
}

void GetTheCrown::Update(float step) {
  takenThisFrame_ = false;
  holdTime_ += step;
  PlaceCrown();
  if (holdTime_ < kPayPause) return;
  holdTime_ = 0.0f;
  AwardPoints(holder_, kPay);
}

void GetTheCrown::OnContact(const GalePhysics::Contact& contact) {
  if (takenThisFrame_ || contact.first == nullptr || contact.second == nullptr || !IsFirstPlayerFast(contact)) return;
  const int first = PlayerIndexFromName(contact.firstOwner->name);
  const int second = PlayerIndexFromName(contact.secondOwner->name);
  if (first < 0 || second < 0 || (first != holder_ && second != holder_)) return;
  holder_ = second == holder_ ? first : second;
  takenThisFrame_ = true;
  Audio::Play(Sound::kCrown, Audio::kOneShot);
  PlaceCrown();
}

void GetTheCrown::End() {
  AwardPoints(holder_, kFinalBonus);
  if (GameObject* crown = Objects().GetObject(crownId_)) crown->alive = false;
  crownId_ = 0;
  Objective::End();
}
