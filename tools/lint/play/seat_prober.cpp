#include "tools/lint/play/seat_prober.h"

#include <cmath>
#include <numbers>

#include "core/game_time.h"
#include "core/transform.h"
#include "match/episode/new_game.h"
#include "physics/rigid_body.h"
#include "tools/lint/play/free_places.h"

namespace {

constexpr float kWeakest = 3.0f;  // launch, units per body second
constexpr float kStrongest = 8.0f;

BotPlan AnyLaunch(BotDice& dice) {
  const float angle = dice.Between(0.0f, 2.0f * std::numbers::pi_v<float>);
  return {true, false, {std::cos(angle), std::sin(angle), 0.0f}, dice.Between(kWeakest, kStrongest), {}};
}

}  // namespace

SeatProber::SeatProber(int number, int runs) : runs_(runs), next_(number * kPlayers) {
  for (int player = 0; player < kPlayers; ++player)
    seats_[static_cast<std::size_t>(player)] = std::make_unique<Seat>(number, player);
}

void SeatProber::Connect(ScriptedPlatform& platform) {
  for (int player = 0; player < kPlayers; ++player) platform.ConnectPad(player, true);
}

void SeatProber::BeginPiece() {
  shutPlaces_ = FindShutPlaces();
  since_ = Time().elapsedTime;
}

void SeatProber::Play(int frame, ScriptedPlatform& platform) {
  if (!IsMatchRunning()) return;
  for (const auto& seat : seats_) {
    if (!seat->plan.launch || seat->hands.GetLaunchFrame() == frame - 1) seat->plan = AnyLaunch(seat->dice);
    seat->hands.Move(frame, seat->plan, platform);
  }
}

bool SeatProber::MoveIfDue() {
  if (Time().elapsedTime < since_ + kMoveAfter) return false;
  since_ = Time().elapsedTime;
  for (int player = 0; player < kPlayers; ++player) {
    const GameObject* object = GetPlayerObject(player);
    const auto number = static_cast<std::size_t>(next_ + player);
    const bool shut = number < shutPlaces_.size() && IsRoomAt(shutPlaces_[number]);
    if (object == nullptr) continue;
    object->GetTransform().position = shut ? shutPlaces_[number] : ScatteredPlace(next_ + player);
    if (auto* body = object->Get<GalePhysics::RigidBody>()) body->velocity = {};
  }
  next_ += runs_ * kPlayers;
  return true;
}
