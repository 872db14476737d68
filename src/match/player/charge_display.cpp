#include "match/player/charge_display.h"

#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/transform.h"
#include "graphics/sprite_colour.h"

namespace {

constexpr float kBarLength = 0.5f;  // world units per unit of charge
constexpr float kBarWidth = 0.5f;
constexpr float kBarBehind = 0.002f;  // how far the bar lies under its player
constexpr float kArrowGap = 0.1f;     // from the bar's end to the arrow
constexpr float kArrowDepth = -0.1f;

std::uint32_t MakeTinted(const char* texture, int player) {
  const std::uint32_t id = Objects().CreateObject();
  auto& sprite = Objects().GetObject(id)->Insert(std::make_unique<Sprite>());
  sprite.texturePath = texture;
  const PlayerColour& colour = kPlayerColours[static_cast<std::size_t>(player)];
  SetColour255(sprite, {colour.r, colour.g, colour.b, kFullColour});
  return id;
}

void KillAndForget(std::uint32_t& id) {
  if (GameObject* object = Objects().GetObject(id)) object->alive = false;
  id = 0;
}

}  // namespace

void ChargeDisplay::Show(int player) {
  barId_ = MakeTinted("BlueBox.png", player);
  arrowId_ = MakeTinted("bluetriangle.png", player);
}

void ChargeDisplay::Place(const Vec3& place, const Vec3& direction, float angle, float charge) const {
  if (const GameObject* bar = Objects().GetObject(barId_)) {
    Transform& transform = bar->GetTransform();
    transform.orientation = QuaternionFromZ(angle);
    transform.position = place + direction * (0.5f * kBarLength * charge);
    transform.position.z -= kBarBehind;
    transform.graphicsScale.x = kBarLength * charge;
    transform.graphicsScale.y = kBarWidth;
  }
  if (const GameObject* arrow = Objects().GetObject(arrowId_)) {
    const float reach = kBarLength * charge + kArrowGap;
    Transform& transform = arrow->GetTransform();
    transform.orientation = QuaternionFromZ(angle - kPi / 2.0f);
    transform.position = {place.x + direction.x * reach, place.y + direction.y * reach, kArrowDepth};
  }
}

void ChargeDisplay::Remove() {
  KillAndForget(barId_);
  KillAndForget(arrowId_);
}
