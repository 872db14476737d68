// What an object looks like: a textured quad, tinted, through a window of its picture. Drawn by the renderer.
#pragma once

#include <string>

#include "core/component.h"
#include "graphics/mesh_type.h"

class Sprite final : public Component {
 public:
  static constexpr Kind kKind = Kind::kSprite;

  void Serialize(Serializer& writer) override;
  /// Also loads the picture unless it is loaded already.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;

  // The part of the picture that is seen, in fractions of it: (u, v) shows (u * row + startFrame, v * columns +
  // endFrame). The names are those of level files; none counts rows, columns or frames.
  float row = 1.0f;         ///< the part's width
  float columns = 1.0f;     ///< the part's height
  float startFrame = 0.0f;  ///< the part's left edge
  float endFrame = 0.0f;    ///< the part's lower edge
  float r = 1.0f;           ///< colour and opacity, 0 to 1, multiplied with the picture's
  float g = 1.0f;
  float b = 1.0f;
  float a = 1.0f;
  int meshType = MeshType::kQuad;  ///< what else than a quad, a circle or the full screen draws nothing
  bool visible = true;
  std::string shaderName = "default";
  std::string texturePath;  ///< file name in Texture/
};
