#include "match/rules/lord_of_the_beach_ball.h"

#include <array>
#include <cmath>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "match/players.h"
#include "match/score/point_earner.h"
#include "match/score/ranking.h"
#include "scripts/archetype.h"
#include "scripts/fast_player.h"

namespace {

constexpr char kBallName[] = "theball";
constexpr float kPayPause = 1.0f;  // seconds of game time
constexpr int kPay = 3;
constexpr std::array<const char*, kPlayers> kPictures = {"redball.png", "whiteball.png", "blueball.png",
                                                         "yellowball.png"};

}  // namespace

LordOfTheBeachBall::LordOfTheBeachBall(std::string title, int seconds)
    : Objective(std::move(title), seconds), lastAward_(Time().elapsedTime) {}

// The ball comes before the slow motion, which keeps its damping for it.
void LordOfTheBeachBall::Begin() {
  const GameObject* ball = CreateFromArchetype(kBallName);
  ballId_ = ball == nullptr ? 0 : ball->id;
  if (auto* body = ball == nullptr ? nullptr : ball->Get<GalePhysics::RigidBody>())
    body->damping = std::sqrt(body->damping);
  Objective::Begin();
}

GameObject* LordOfTheBeachBall::FindBall() const { return Objects().GetObject(ballId_); }

void LordOfTheBeachBall::SetOwner(int player) {
  owner_ = player;
  const GameObject* ball = FindBall();
  Sprite* sprite = ball == nullptr ? nullptr : ball->Get<Sprite>();
  if (sprite != nullptr && IsPlayerIndex(player)) sprite->texturePath = kPictures[static_cast<std::size_t>(player)];
}

void LordOfTheBeachBall::Update(float /*step*/) {
  const GameObject* ball = FindBall();
  if (ball == nullptr) return;
  if (!ownerChosen_) {
    SetOwner(RankPlayers().back().player);
    ownerChosen_ = true;
  }
  const float now = Time().elapsedTime;
  if (now < lastAward_ + kPayPause || owner_ < 0) return;
  AwardPoints(owner_, kPay, ball->GetTransform().position);
  lastAward_ = now;
}

void LordOfTheBeachBall::OnContact(const GalePhysics::Contact& contact) {
  const int player = PlayerIndexFromName(contact.firstOwner->name);
  if (player < 0 || contact.secondOwner->name != kBallName || !IsFirstPlayerFast(contact)) return;
  Audio::Play(Sound::kBeachBallHit, Audio::kOneShot);
  SetOwner(player);
}

void LordOfTheBeachBall::End() {
  if (GameObject* ball = FindBall()) ball->alive = false;
  ballId_ = 0;
  Objective::End();
}
