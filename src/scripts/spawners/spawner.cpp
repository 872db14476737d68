#include "scripts/spawners/spawner.h"

#include <array>

#include "core/object_manager.h"
#include "core/random.h"
#include "core/script_box.h"
#include "graphics/sprite.h"
#include "physics/make_physical.h"
#include "scripts/props/death_timer.h"

namespace {

using GalePhysics::PhysicalShape;

constexpr float kInterval = 0.2f;    // game seconds
constexpr float kLife = 3.0f;        // game seconds
constexpr float kThrowRange = 1.0f;  // world units from the middle, along each axis
constexpr float kUnitBall = 0.5f;    // radius of a ball as wide as a box

struct Pattern {
  PhysicalShape shape;
  int count;
  Vec3 velocity;          // units per body second
  float mass;             // 0: immovable
  float angularVelocity;  // radians per body second
  bool seen;              // with a picture
};

constexpr std::array<Pattern, 8> kPatterns = {{
    {PhysicalShape::kBox, 1, {}, 1.0f, 0.0f, true},                       // a crate at rest
    {PhysicalShape::kBox, 1, {0.0f, 4.0f, 0.0f}, 1.0f, 3.0f, true},       // one that spins upwards
    {PhysicalShape::kBox, 3, {4.0f, 0.0f, 0.0f}, 1.0f, 0.0f, true},       // a heap that falls apart to the right
    {PhysicalShape::kBox, 1, {-6.0f, 0.0f, 0.0f}, 4.0f, 0.0f, true},      // a heavy one to the left
    {PhysicalShape::kSphere, 1, {}, 1.0f, 0.0f, true},                    // a ball at rest
    {PhysicalShape::kSphere, 3, {0.0f, -5.0f, 0.0f}, 1.0f, 0.0f, true},   // balls downwards
    {PhysicalShape::kSphere, 1, {6.0f, 6.0f, 0.0f}, 0.25f, 0.0f, true},   // a light one across
    {PhysicalShape::kSphere, 2, {-2.0f, 2.0f, 0.0f}, 1.0f, 6.0f, false},  // balls that nobody sees
}};

void Throw(const Pattern& pattern) {
  const float x = RandomAround(kThrowRange);
  const float y = RandomAround(kThrowRange);
  const float size = pattern.shape == PhysicalShape::kBox ? 1.0f : kUnitBall;
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = "thrown";
  GalePhysics::MakePhysical(object, {.shape = pattern.shape,
                                     .size = {size, size, 0.0f},
                                     .position = {x, y, 0.0f},
                                     .velocity = pattern.velocity,
                                     .mass = pattern.mass,
                                     .angularVelocity = {0.0f, 0.0f, pattern.angularVelocity}});
  if (pattern.seen) object.Insert(std::make_unique<Sprite>()).texturePath = "ShittyCrate.png";
  object.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<DeathTimer>(kLife));
}

}  // namespace

void Spawner::Update(float step) {
  if (!owner->alive) return;  // updated once more in the frame of a new game
  timer_ += step;
  if (timer_ < kInterval) return;
  timer_ = 0.0f;
  const Pattern& pattern = kPatterns[RandomIndex(kPatterns.size())];
  for (int i = 0; i < pattern.count; ++i) Throw(pattern);
}
