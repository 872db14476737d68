// What of an object can be pointed at: its collider's shape, or its picture's.
#pragma once

#include <string>
#include <vector>

#include "core/game_object.h"
#include "physics/math/vec3.h"

/// The corners, or the points of a circle, in the world.
std::vector<Vec3> ShapeOf(const GameObject& object);

/// An upright rectangle in the world.
struct Bounds {
  float left = 0.0f;
  float right = 0.0f;
  float bottom = 0.0f;
  float top = 0.0f;

  bool Meets(const Bounds& other) const {
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
  }
  Vec3 Middle() const { return {(left + right) / 2.0f, (bottom + top) / 2.0f, 0.0f}; }
  void Add(const Bounds& other);
};

/// Around the shape.
Bounds BoundsOf(const GameObject& object);

/// Points of a circle about the origin.
std::vector<Vec3> CirclePoints(float radius);

/// The selected objects that are there, in the order of picking.
std::vector<GameObject*> SelectedObjects();

/// Its name, or what stands for none.
std::string ShownNameOf(const GameObject& object);
