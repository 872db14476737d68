#include "graphics/sprite_text.h"

#include "core/field_bar.h"

void SpriteText::SetScale(const Vec3& scale) {
  shape[0] = scale.x;
  shape[5] = scale.y;
  shape[10] = scale.z;
}

void SpriteText::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("SpriteText");
  bar.Add("r", &r);
  bar.Add("g", &g);
  bar.Add("b", &b);
  bar.Add("a", &a);
  bar.Add("text", &text);
  bar.Add("fontsize", &fontSize);
  bar.Add("x scale", &shape[0]);
  bar.Add("y scale", &shape[5]);
  bar.Add("z scale", &shape[10]);
  bar.EndGroup();
}
