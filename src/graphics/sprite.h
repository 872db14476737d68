// What an object looks like: a textured quad, tinted, through a window of its picture. Drawn by the renderer.
#pragma once

#include <string>

#include "core/component.h"

class Sprite final : public Component {
 public:
  static constexpr Kind kKind = Kind::kSprite;

  static constexpr int kQuad = 0;        ///< textured, placed by the Transform
  static constexpr int kCircle = 1;      ///< outline of radius 1
  static constexpr int kFullScreen = 3;  ///< the picture over the whole view, without tint or Transform

  void Serialize(Serializer& writer) override;
  /// Also loads the picture unless it is loaded already.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;

  // The window of the picture: (u, v) shows (u * row + startFrame, v * columns + endFrame).
  float row = 1.0f;
  float columns = 1.0f;
  float startFrame = 0.0f;
  float endFrame = 0.0f;
  float r = 1.0f;  ///< colour and opacity, 0 to 1, multiplied with the picture's
  float g = 1.0f;
  float b = 1.0f;
  float a = 1.0f;
  int meshType = kQuad;  ///< any other than the three above draws nothing
  bool visible = true;
  std::string shaderName = "default";
  std::string texturePath;  ///< file name in Texture/
};
