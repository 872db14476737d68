#include "match/rules/king_of_the_hill.h"

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/transform.h"
#include "graphics/sprite_colour.h"
#include "match/player/dizzy.h"
#include "match/players.h"
#include "match/score/point_earner.h"
#include "physics/sphere_collider.h"
#include "scripts/fast_player.h"

namespace {

constexpr char kHillName[] = "TheHill";
constexpr float kRadius = 1.75f;  // world units
constexpr Vec3 kPlace = {0.0f, 0.0f, -0.1f};
constexpr Vec3 kSize = {4.5f, 4.5f, 0.0f};  // of the picture
constexpr float kAwardPause = 0.5f;         // seconds of game time
constexpr int kAward = 1;
constexpr float kRammingSpeed = 3.0f;  // of both players together, units per body second
constexpr Colour255 kEmpty = {255.0f, 255.0f, 255.0f, 0.25f * kFullColour};
constexpr float kOccupiedOpacity = 0.75f * kFullColour;

void Tint(const GameObject* hill, const Colour255& colour) {
  if (Sprite* sprite = hill == nullptr ? nullptr : hill->Get<Sprite>()) SetColour255(*sprite, colour);
}

}  // namespace

// The hill comes after the slow motion has started: nothing on it needs its damping kept.
void KingOfTheHill::Begin() {
  occupant_ = kNotAPlayer;
  lastAward_ = Time().elapsedTime;
  Objective::Begin();
  hillId_ = Objects().CreateObject();
  GameObject& hill = *FindHill();
  hill.name = kHillName;
  hill.GetTransform().position = kPlace;
  hill.GetTransform().graphicsScale = kSize;
  hill.Insert(std::make_unique<Sprite>()).texturePath = "graybubble.png";
  hill.Insert(std::make_unique<GalePhysics::SphereCollider>(kRadius, 1.0f)).ghost = true;
}

GameObject* KingOfTheHill::FindHill() const { return Objects().GetObject(hillId_); }

void KingOfTheHill::OnCollision(const CollisionPair& pair) {
  const int player = PlayerIndexFromName(pair.self->name);
  if (player < 0 || player == occupant_ || pair.other->name != kHillName) return;
  if (occupant_ != kNotAPlayer) {  // a second one
    lastAward_ = Time().elapsedTime;
    ShowEmpty();
  }
  occupant_ = player;
}

void KingOfTheHill::Update(float /*step*/) {
  if (occupant_ == kNotAPlayer) {
    ShowEmpty();
    king_ = kNobody;
    return;
  }
  PayOccupant();
  ShowOccupant();
  king_ = occupant_;
  occupant_ = kNotAPlayer;
}

void KingOfTheHill::PayOccupant() {
  const float now = Time().elapsedTime;
  if (now < lastAward_ + kAwardPause || GetPlayerObject(occupant_) == nullptr) return;
  AwardPoints(occupant_, kAward);
  lastAward_ = now;
}

void KingOfTheHill::ShowEmpty() const { Tint(FindHill(), kEmpty); }

void KingOfTheHill::ShowOccupant() const {
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(occupant_)];
  Tint(FindHill(), {colour.r, colour.g, colour.b, kOccupiedOpacity});
}

// Both players tell of their contact; the one with the lower index is heard, so that a king is stunned once.
void KingOfTheHill::OnContact(const GalePhysics::Contact& contact) {
  if (contact.first == nullptr || contact.second == nullptr) return;
  const int first = PlayerIndexFromName(contact.firstOwner->name);
  const int second = PlayerIndexFromName(contact.secondOwner->name);
  if (first < 0 || second <= first || (first != king_ && second != king_)) return;
  if (!(Length(contact.first->velocity) + Length(contact.second->velocity) > kRammingSpeed)) return;
  const GameObject* king = first == king_ ? contact.firstOwner : contact.secondOwner;
  if (Dizzy* dizzy = FindDizzy(*king)) dizzy->Stun();
}

void KingOfTheHill::End() {
  Objective::End();
  if (GameObject* hill = FindHill()) hill->alive = false;
  hillId_ = 0;
}
