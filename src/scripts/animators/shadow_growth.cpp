#include "scripts/animators/shadow_growth.h"

#include <algorithm>

#include "core/game_object.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite_colour.h"

namespace {
constexpr float kFirstOpacity = 0.5f;
constexpr float kDarkening = 0.5f;  // opacity, 0 to 255, a unit of growth
}  // namespace

void ShadowGrowth::Initialize() {
  owner->GetTransform().graphicsScale = {};
  SetFirstOpacity();
}

// In a file the sprite comes after the scripts: it gets its opacity at the first update.
void ShadowGrowth::SetFirstOpacity() {
  Sprite* sprite = owner->Get<Sprite>();
  if (sprite == nullptr || opacitySet_) return;
  opacitySet_ = true;
  for (float* channel : {&sprite->r, &sprite->g, &sprite->b}) *channel = std::clamp(*channel, 0.0f, 1.0f);
  sprite->a = kFirstOpacity;
}

void ShadowGrowth::Update(float /*step*/) {
  SetFirstOpacity();
  Vec3& scale = owner->GetTransform().graphicsScale;
  if (scale.x > 1.0f && scale.y > 1.0f) return;
  if (Sprite* sprite = owner->Get<Sprite>())
    sprite->a = std::clamp(sprite->a * kFullColour + scaleFactor_ * kDarkening, 0.0f, kFullColour) / kFullColour;
  scale.x += scaleFactor_;
  scale.y += scaleFactor_;
}

void ShadowGrowth::Serialize(Serializer& writer) const { writer.WriteFloat("ScaleFactor", scaleFactor_); }
void ShadowGrowth::Deserialize(Serializer& reader) { scaleFactor_ = reader.ReadFloat(); }
