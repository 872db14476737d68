#include "screens/podium.h"

#include <array>
#include <string>

#include "core/object_manager.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"
#include "match/episode/new_game.h"
#include "match/players.h"
#include "match/score/ranking.h"
#include "physics/math/trigonometry.h"

namespace {

constexpr std::array<const char*, kPlayers> kPortraits = {"rp.png", "wp.png", "bp.png", "gp.png"};
constexpr std::array<float, kPlayers> kSizes = {6.0f, 3.0f, 1.5f, 1.0f};  // by place, world units
constexpr float kFirstX = -10.0f;
constexpr float kSpacing = 7.0f;
constexpr float kHalfTurn = 1.5707963705062866f;      // radians, halved already: the portraits look up to the left
constexpr Vec3 kPointsOffset = {-1.0f, -9.0f, 0.0f};  // from the portrait
constexpr Vec3 kPointsScale = {0.02f, 0.02f, 0.0f};

GameObject& AddAt(const Vec3& position, const Vec3& scale, const char* name) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = name;
  object.GetTransform().position = position;
  object.GetTransform().graphicsScale = scale;
  return object;
}

}  // namespace

void BuildPodium() {
  EndMatch();
  Vec3 place = {kFirstX, 0.0f, 0.0f};
  auto size = kSizes.begin();
  for (const Rank& ranked : RankPlayers()) {
    GameObject& portrait = AddAt(place, {*size, *size, 0.0f}, "portrait");
    portrait.GetTransform().orientation = {Cos(kHalfTurn), 0.0f, 0.0f, Sin(kHalfTurn)};
    portrait.Insert(std::make_unique<Sprite>()).texturePath = kPortraits[static_cast<std::size_t>(ranked.player)];
    AddAt(place + kPointsOffset, kPointsScale, "portrait points")
        .Insert(std::make_unique<SpriteText>())
        .SetText(std::to_string(ranked.points));
    place.x += kSpacing;
    ++size;
  }
}
