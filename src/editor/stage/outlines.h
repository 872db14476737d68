// Lines over the picture: around what is selected, and from the world to the window in general.
#pragma once

#include <vector>

#include "core/game_object.h"
#include "editor/acts/object_shape.h"
#include "editor/bars/bar_window.h"
#include "physics/math/vec3.h"

/// Where points of the world are in the window.
class StageView {
 public:
  /// As the main camera sees it now, in a window of that size.
  StageView(int windowWidth, int windowHeight);

  /// The points as a line; without any when one of them is behind the camera.
  StageLine Line(const std::vector<Vec3>& points, StageLine::Ink ink, bool closed = true) const;
  /// A point in window pixels.
  std::array<float, 2> Pixel(const Vec3& point) const;
  /// Of the picture, without the window's black edges, in pixels.
  Bounds GetPicture() const;

 private:
  bool See(const Vec3& point, std::array<float, 2>& pixel) const;

  std::array<float, 16> toClip_{};  // column-major
  bool usable_ = false;
  float left_ = 0.0f;
  float top_ = 0.0f;
  float width_ = 0.0f;
  float height_ = 0.0f;
};
