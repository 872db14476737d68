#include <algorithm>
#include <array>
#include <cmath>

#include "lint/level_rules.h"
#include "physics/math/vec3.h"

namespace {

constexpr float kLeastGap = 0.01f;     // world units between solids, or they meet in every sub-step for nothing
constexpr float kPlayerRadius = 0.5f;  // world units
constexpr float kUnturned = 0.001f;    // of the quaternion's k
constexpr std::array<Vec3, 4> kStarts = {{{2, 2, 0}, {-2, 2, 0}, {2, -2, 0}, {-2, -2, 0}}};

// An immovable solid: a sphere, or a box that is not turned.
struct Solid {
  const LintObject* object;
  float x;
  float y;
  float halfWidth;
  float halfHeight;
  float radius;  // of a sphere; 0 for a box
};

// Solids of group 0 let the others of it pass, and are not looked at here.
bool ReadSolid(const LintObject& object, Solid& solid) {
  const LintBlock* body = object.Find("RigidBody");
  const LintBlock* sphere = object.Find("SphereCollider");
  const LintBlock* shape = sphere != nullptr ? sphere : object.Find("BoxCollider");
  const auto position = NumbersOf(object.Find("Transform"), "position");
  const auto turn = NumbersOf(object.Find("Transform"), "orientation");
  if (shape == nullptr || position.size() < 3 || turn.size() < 4 || NumberOf(body, "inverseMass", 1.0f) != 0.0f)
    return false;
  if (!HasCollider(object, false) || NumberOf(shape, "collision group") == 0.0f) return false;
  const float radius = NumberOf(sphere, "radius");
  const auto half = sphere != nullptr ? std::vector<float>{radius, radius, radius} : NumbersOf(shape, "half extents");
  if (half.size() < 3 || (sphere == nullptr && std::abs(turn[3]) > kUnturned)) return false;
  solid = {&object, position[0], position[1], half[0], half[1], radius};
  return true;
}

// How far a point is from the solid; below 0 inside of it.
float Distance(const Solid& solid, float x, float y) {
  const float dx = std::abs(x - solid.x);
  const float dy = std::abs(y - solid.y);
  if (solid.radius > 0.0f) return std::hypot(dx, dy) - solid.radius;
  const float outX = dx - solid.halfWidth;
  const float outY = dy - solid.halfHeight;
  return outX > 0.0f && outY > 0.0f ? std::hypot(outX, outY) : std::max(outX, outY);
}

float Gap(const Solid& a, const Solid& b) {
  if (a.radius > 0.0f) return Distance(b, a.x, a.y) - a.radius;
  if (b.radius > 0.0f) return Distance(a, b.x, b.y) - b.radius;
  const Solid grown = {a.object, a.x, a.y, a.halfWidth + b.halfWidth, a.halfHeight + b.halfHeight, 0.0f};
  return Distance(grown, b.x, b.y);
}

}  // namespace

void CheckPlacement(const LintContext& context) {
  std::vector<Solid> solids;
  Solid solid = {};
  for (const LintObject& object : context.level.objects)
    if (ReadSolid(object, solid)) solids.push_back(solid);
  for (const Solid& one : solids)
    for (const Vec3& start : kStarts)
      if (Distance(one, start.x, start.y) < kPlayerRadius)
        context.report.Say(one.object->line, "starting-place", "it stands where a player starts: move it");
  // From left to right, so that only neighbours are compared.
  const auto left = [](const Solid& a) { return a.x - a.halfWidth; };
  std::stable_sort(solids.begin(), solids.end(), [&](const Solid& a, const Solid& b) { return left(a) < left(b); });
  for (std::size_t i = 0; i < solids.size(); ++i) {
    const float reach = solids[i].x + solids[i].halfWidth + kLeastGap;
    for (std::size_t j = i + 1; j < solids.size() && left(solids[j]) < reach; ++j) {
      if (Gap(solids[i], solids[j]) >= kLeastGap) continue;
      const auto [earlier, later] = std::minmax(solids[i].object, solids[j].object);
      context.report.Say(later->line, "touching",
                         "it touches \"" + std::string(earlier->name) + "\": leave a hundredth of a unit between");
      break;
    }
  }
}
