#include "match/player/player_body.h"

#include "core/game_object.h"
#include "core/game_time.h"
#include "core/player_colours.h"
#include "graphics/sprite_colour.h"
#include "physics/rigid_body.h"

namespace {

constexpr float kLife = 0.07f;              // game seconds
constexpr float kPictureToMantle = 1.753f;  // sides of the picture to a diameter of the mantle
constexpr int kMostParticles = 16;          // more than live at a time

}  // namespace

// One an update, and the first at once: a title that stops the game clock must not hide anybody.
PlayerBody::PlayerBody(int player, float diameter) {
  textureName = "particlebubble.png";
  maxParticles = kMostParticles;
  const PlayerColour& tint = kPlayerColours[static_cast<std::size_t>(player)];
  colour = {tint.r / kFullColour, tint.g / kFullColour, tint.b / kFullColour};
  for (Vec3* point : {&minVelocity, &maxVelocity, &minAcceleration, &maxAcceleration}) *point = {};
  minScale.x = maxScale.x = kPictureToMantle * diameter;
  minLifespan = maxLifeSpan = kLife;
  spawnIntervalMin = spawnIntervalMax = 0.0f;
  spawnTimer = 0.0f;
}

// Bodies move after the scripts; without this the face would run ahead of its body.
void PlayerBody::Update(float step) {
  const auto* body = owner->Get<GalePhysics::RigidBody>();
  const Vec3 way = body == nullptr ? Vec3{} : body->velocity * (step * kSubSteps * kPhysicsShare);
  startingPositionMin = startingPositionMax = way;
  BasicParticleEmitter::Update(step);
}
