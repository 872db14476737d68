// What files do not keep of an object but code gives it: a text and an assemblage of colliders.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/game_object.h"
#include "physics/math/quaternion.h"
#include "physics/math/vec3.h"

/// The values that no bar shows; those that bars show are put back by path.
struct UnsavedParts {
  struct Text {
    bool visible;
    std::array<float, 16> shape;
    Vec3 offset;
    std::string fontName;
  };
  struct Box {
    Vec3 halfExtents;
    Vec3 offset;
    Quaternion rotation;
  };

  std::optional<Text> text;
  std::optional<std::vector<Box>> assemblage;
};

UnsavedParts TakeUnsavedParts(const GameObject& object);
/// Gives the object new components of these values.
void PutUnsavedParts(const UnsavedParts& parts, GameObject& object);
