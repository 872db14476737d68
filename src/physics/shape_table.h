// What the broad phase knows of each listed collider: copied out of the objects into rows side by side, since the walks
// over pairs and quadrants would otherwise jump through four objects a shape. A row's number is the shape's place in
// the order of the lists: boxes, spheres, assemblages.
#pragma once

#include <cstdint>
#include <vector>

#include "physics/bounds.h"
#include "physics/collider.h"

namespace GalePhysics {

class ShapeTable {
 public:
  struct Circle {
    float x, y, radius;  // the broad phase's own, around the owner's position
  };

  /// Makes every row anew from the lists, which may have changed in any way.
  void Renew();
  /// Makes the rows of those anew whose bodies were not at rest at the last Renew. For sub-steps before which nobody
  /// could have touched anything else.
  void Follow();

  std::size_t Size() const { return shapes_.size(); }
  const Collider& GetCollider(std::uint32_t row) const { return *shapes_[row].collider; }
  const Circle& GetCircle(std::uint32_t row) const { return shapes_[row].circle; }
  /// MeetsAll of its group: two shapes meet when either has it.
  bool MeetsAllOthers(std::uint32_t row) const { return shapes_[row].meetsAll; }
  const std::vector<Bounds>& GetBounds() const { return bounds_; }
  /// The circle's (right, -left, upper, -lower) ends.
  const Lanes& GetReach(std::uint32_t row) const { return reaches_[row]; }

 private:
  struct Shape {
    const Collider* collider;
    Circle circle;
    bool meetsAll;
  };

  void Resize(std::size_t size);
  template <class Shapes>
  std::uint32_t RenewFrom(const Shapes& shapes, std::uint32_t row);
  void Place(std::uint32_t row, const Bounds& bounds);

  std::vector<Shape> shapes_;
  std::vector<Bounds> bounds_;
  std::vector<Lanes> reaches_;
  std::vector<std::uint32_t> moving_;  // rows for Follow
};

}  // namespace GalePhysics
