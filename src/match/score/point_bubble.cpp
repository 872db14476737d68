#include "match/score/point_bubble.h"

#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/random.h"
#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_colour.h"
#include "match/score/point_movment.h"
#include "match/score/score_displays.h"
#include "physics/math/trigonometry.h"
#include "physics/rigid_body.h"
#include "scripts/props/death_timer.h"

namespace {

constexpr float kLife = 4.0f;  // game seconds
constexpr float kTurn = 2.0f * kPi;
constexpr int kLargestBubble = 2;

long long& PointsAwarded() {
  static SceneState<long long> points;
  return *points;
}

struct Look {
  const char* picture;
  float size;  // world units
};
constexpr Look kOnePoint = {"pointbubble1.png", 1.0f};
constexpr Look kTwoPoints = {"pointbubble2.png", 0.85f};

void CreateBubble(int value, int player, const Vec3& place, float angle, std::uint32_t creditTargetId) {
  GameObject& bubble = *Objects().GetObject(Objects().CreateObject());
  bubble.name = "APoint";
  const Look& look = value == 1 ? kOnePoint : kTwoPoints;
  bubble.GetTransform().position = place + Vec3{Cos(angle), Sin(angle), 0.0f};
  bubble.GetTransform().graphicsScale = {look.size, look.size, 0.0f};
  auto& sprite = bubble.Insert(std::make_unique<Sprite>());
  sprite.texturePath = look.picture;
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  SetColour255(sprite, {colour.r, colour.g, colour.b, kFullColour});
  bubble.Insert(std::make_unique<GalePhysics::RigidBody>());
  auto& scripts = bubble.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(std::make_unique<DeathTimer>(kLife));
  if (GetPlayerPuller(player) != nullptr)
    scripts.AddScript(std::make_unique<PointMovment>(value, player, angle, creditTargetId));
}

}  // namespace

void CreatePointBubbles(int points, int player, const Vec3& place, std::uint32_t creditTargetId) {
  PointsAwarded() += points;
  while (points > 0) {
    const float angle = RandomUpTo(kTurn);
    const int value = points > kLargestBubble ? 1 + static_cast<int>(RandomIndex(2)) : points;
    points -= value;
    CreateBubble(value, player, place, angle, creditTargetId);
  }
}

long long GetPointsAwarded() { return PointsAwarded(); }
