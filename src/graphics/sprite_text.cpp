#include "graphics/sprite_text.h"

void SpriteText::SetScale(const Vec3& scale) {
  shape[0] = scale.x;
  shape[5] = scale.y;
  shape[10] = scale.z;
}
