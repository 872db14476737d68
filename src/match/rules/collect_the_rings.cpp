#include "match/rules/collect_the_rings.h"

#include <cmath>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/player_name.h"
#include "core/random.h"
#include "core/transform.h"
#include "graphics/sprite_colour.h"
#include "match/score/point_earner.h"
#include "physics/contact.h"
#include "physics/generator_host.h"
#include "physics/rigid_body.h"
#include "physics/spring.h"
#include "scripts/archetype.h"

namespace {

constexpr char kFreeRing[] = "ringstatic";
constexpr char kTakenRing[] = "ringfollowing";
constexpr int kFirstRings = 20;
constexpr int kMoreRings = 2;
constexpr float kPause = 1.0f;  // seconds of game time between two pays and new rings
// Rings lie at x from -12 to 12 and y from -7 to 7.
constexpr float kHalfWidth = 12.0f;
constexpr float kHalfHeight = 7.0f;
// With a ring of mass 1 and damping 0.98 the chain lags 0.7 units at a speed of 10, and swings out in a few turns.
constexpr float kSpringConstant = 100.0f;
constexpr float kSpringLength = 0.8f;
constexpr float kLosingDifference = 1.0f;  // of the speeds along the contact's normal
constexpr float kLostTint = 0.25f;

void Tint(const GameObject& ring, float r, float g, float b) {
  if (Sprite* sprite = ring.Get<Sprite>())
    SetColour255(*sprite, {r * kFullColour, g * kFullColour, b * kFullColour, sprite->a * kFullColour});
}

void KillRing(std::uint32_t id) {
  if (GameObject* ring = Objects().GetObject(id)) ring->alive = false;
}

void PlaceRing(std::vector<std::uint32_t>& rings) {
  const float y = RandomAround(kHalfHeight);
  const float x = RandomAround(kHalfWidth);
  GameObject* ring = CreateFromArchetype(kFreeRing);
  if (ring == nullptr) return;
  ring->GetTransform().position = {x, y, 0.0f};
  rings.push_back(ring->id);
}

void Hang(const GameObject& ring, const GameObject& anchor) {
  auto* body = ring.Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  body->AddGenerator(
      &GalePhysics::AdoptGenerator(std::make_unique<GalePhysics::Spring>(anchor, kSpringConstant, kSpringLength)));
}

float SpeedAlong(const Vec3& normal, const GalePhysics::RigidBody& body) {
  return std::abs(Dot(body.velocity, normal));
}

}  // namespace

void CollectTheRings::Begin() {
  Objective::Begin();
  for (Chain& chain : chains_) chain.clear();
  rings_.clear();
  nextSpawn_ = Time().elapsedTime + kPause;
  PlaceRings(kFirstRings);
}

void CollectTheRings::PlaceRings(int count) {
  for (int i = 0; i < count; ++i) PlaceRing(rings_);
}

void CollectTheRings::Update(float /*step*/) {
  if (!(Time().elapsedTime > nextSpawn_)) return;
  PlaceRings(kMoreRings);
  nextSpawn_ = Time().elapsedTime + kPause;
  PayForLastRings();
}

void CollectTheRings::PayForLastRings() {
  for (int player = 0; player < kPlayers; ++player) {
    Chain& chain = chains_[static_cast<std::size_t>(player)];
    if (chain.empty()) continue;
    const GameObject* last = Objects().GetObject(chain.back());
    AwardPoints(player, 1, last == nullptr ? Vec3{} : last->GetTransform().position);
    KillRing(chain.back());
    chain.pop_back();
  }
}

CollectTheRings::Chain* CollectTheRings::ChainOf(const GameObject* player) {
  const int index = player == nullptr ? kNotAPlayer : PlayerIndexFromName(player->name);
  return IsPlayerIndex(index) ? &chains_[static_cast<std::size_t>(index)] : nullptr;
}

// The new name keeps a second player who overlaps the ring in this sub-step from taking it too.
void CollectTheRings::OnCollision(const CollisionPair& pair) {
  Chain* chain = pair.other->name == kFreeRing ? ChainOf(pair.self) : nullptr;
  if (chain == nullptr) return;
  GameObject& ring = *pair.other;
  ring.name = kTakenRing;
  Audio::Play(Sound::kRingPickup, Audio::kOneShot);
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(PlayerIndexFromName(pair.self->name))];
  Tint(ring, colour.r / kFullColour, colour.g / kFullColour, colour.b / kFullColour);
  const GameObject* last = chain->empty() ? nullptr : Objects().GetObject(chain->back());
  Hang(ring, last == nullptr ? *pair.self : *last);
  chain->push_back(ring.id);
}

// Both players tell of their contact; the second time the chain is gone already.
void CollectTheRings::OnContact(const GalePhysics::Contact& contact) {
  Chain* first = ChainOf(contact.firstOwner);
  if (first == nullptr) return;
  if (contact.secondOwner->name == "whale") Drop(*first);
  Chain* second = ChainOf(contact.secondOwner);
  if (second == nullptr || contact.first == nullptr || contact.second == nullptr) return;
  const float difference = SpeedAlong(contact.normal, *contact.first) - SpeedAlong(contact.normal, *contact.second);
  if (std::abs(difference) < kLosingDifference) return;
  if (Drop(difference < 0.0f ? *first : *second)) Audio::Play(Sound::kRingLose, Audio::kOneShot);
}

bool CollectTheRings::Drop(Chain& chain) {
  if (chain.empty()) return false;
  for (const std::uint32_t id : chain) {
    GameObject* ring = Objects().GetObject(id);
    if (ring == nullptr) continue;
    if (auto* body = ring->Get<GalePhysics::RigidBody>()) body->generators.clear();
    ring->name = kFreeRing;
    Tint(*ring, kLostTint, kLostTint, kLostTint);
  }
  chain.clear();
  return true;
}

void CollectTheRings::End() {
  Objective::End();
  for (const std::uint32_t id : rings_) KillRing(id);
  rings_.clear();
  for (int player = 0; player < kPlayers; ++player) {
    Chain& chain = chains_[static_cast<std::size_t>(player)];
    if (!chain.empty()) AwardPoints(player, static_cast<int>(chain.size()));
    chain.clear();
  }
}
