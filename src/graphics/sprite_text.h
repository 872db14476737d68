// A line of text on an object, centred over its place. Built by code; files do not hold it. Drawn by the renderer.
#pragma once

#include <array>
#include <string>

#include "core/component.h"
#include "physics/math/vec3.h"

class SpriteText final : public Component {
 public:
  static constexpr Kind kKind = Kind::kSpriteText;

  void AddToTweakBar(FieldBar& bar) override;
  void SetText(const std::string& line) { text = line; }
  /// Sets the diagonal of `shape`. A glyph is as many world units tall as it has pixels, up to 96, so texts are small:
  /// a title has 0.03, a label 0.01, here or in the Transform's graphics scale.
  void SetScale(const Vec3& scale);

  bool visible = true;
  std::array<float, 16> shape = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};  ///< row-major, in the object's axes
  float r = 0.0f;                                                                  ///< colour and opacity, 0 to 1
  float g = 0.0f;
  float b = 0.0f;
  float a = 1.0f;
  Vec3 offset;                              ///< world units, added to the object's place
  std::string text;                         ///< bytes above 127 have no glyph
  float fontSize = 12.0f;                   ///< shown by the editor; has no effect
  std::string fontName = "OctoBubble.ttf";  ///< file name in Texture/Fonts/
};
