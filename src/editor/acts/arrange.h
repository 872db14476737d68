// Moving, turning and ordering the selected objects together; each call is one act of the history.
#pragma once

#include <optional>
#include <string>

#include "physics/math/vec3.h"

class History;

namespace Arrange {

enum class Axis { kAcross, kUpright };
enum class Edge { kLeft, kCentre, kRight, kTop, kMiddle, kBottom };

/// Each tells what was done, or why nothing was.
std::string Move(History& history, const Vec3& way);
/// About the middle of all, counter-clockwise.
std::string Turn(History& history, float degrees);
/// Across: left and right change sides, in the middle of all or about that place; their pictures and velocities too.
std::string Mirror(History& history, Axis axis, const std::optional<Vec3>& about = std::nullopt);
/// Puts that edge of each where the outermost one's is, or its middle where that of all is.
std::string Align(History& history, Edge edge);
/// The same way from the middle of one to that of the next, between the two outermost.
std::string Spread(History& history, Axis axis);

}  // namespace Arrange
