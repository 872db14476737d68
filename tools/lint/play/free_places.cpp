#include "tools/lint/play/free_places.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/object_manager.h"
#include "core/player_name.h"
#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"
#include "tools/bots/ballistics.h"

namespace {

constexpr float kStep = 0.25f;  // world units between two places that are looked at
constexpr int kColumns = static_cast<int>(2.0f * Ballistics::kFreeX / kStep) + 1;
constexpr int kRows = static_cast<int>(2.0f * Ballistics::kFreeY / kStep) + 1;
constexpr int kMostTries = 200;
// The sequence of two dimensions that spreads most evenly: powers of 1 over the root of x^3 = x + 1.
constexpr double kSpreadX = 0.7548776662466927;
constexpr double kSpreadY = 0.5698402909980532;

struct Solid {
  const GalePhysics::Collider* collider;
  Matrix34 toOwn;  // of a box
};

float DistanceTo(const Solid& solid, const Vec3& place) {
  if (solid.collider->GetColliderType() == GalePhysics::ColliderType::kSphere) {
    const auto* sphere = static_cast<const GalePhysics::SphereCollider*>(solid.collider);
    const Vec3 centre = sphere->WorldCentre();
    return std::hypot(place.x - centre.x, place.y - centre.y) - sphere->radius;
  }
  const auto* box = static_cast<const GalePhysics::BoxCollider*>(solid.collider);
  const Vec3 own = solid.toOwn * place;
  const float outX = std::abs(own.x) - box->halfExtents.x;
  const float outY = std::abs(own.y) - box->halfExtents.y;
  return outX > 0.0f && outY > 0.0f ? std::hypot(outX, outY) : std::max(outX, outY);
}

std::vector<Solid> FindSolids(bool standFast) {
  std::vector<Solid> solids;
  for (const auto& object : Objects().GetObjects()) {
    const GalePhysics::Collider* collider = GalePhysics::FindCollider(*object);
    const auto* body = object->Get<GalePhysics::RigidBody>();
    if (!object->alive || collider == nullptr || collider->ghost || IsPlayerName(object->name)) continue;
    if (collider->GetColliderType() == GalePhysics::ColliderType::kAssemblage) continue;
    if (standFast && body != nullptr && body->inverseMass != 0.0f) continue;
    Solid solid = {collider, {}};
    if (collider->GetColliderType() == GalePhysics::ColliderType::kBox)
      solid.toOwn = Inverted(static_cast<const GalePhysics::BoxCollider*>(collider)->WorldMatrix());
    solids.push_back(solid);
  }
  return solids;
}

bool IsRoom(const std::vector<Solid>& solids, const Vec3& place) {
  return std::none_of(solids.begin(), solids.end(),
                      [&](const Solid& solid) { return DistanceTo(solid, place) < Ballistics::kPlayerRadius; });
}

Vec3 PlaceOfCell(int cell) {
  return {static_cast<float>(cell % kColumns) * kStep - Ballistics::kFreeX,
          static_cast<float>(cell / kColumns) * kStep - Ballistics::kFreeY, 0.0f};
}

// The cells that are to be reached from `first`; they are taken out of `open`.
std::vector<int> TakeRegion(std::vector<bool>& open, int first) {
  std::vector<int> region = {first};
  open[static_cast<std::size_t>(first)] = false;
  const auto enter = [&](int cell) {
    if (!open[static_cast<std::size_t>(cell)]) return;
    open[static_cast<std::size_t>(cell)] = false;
    region.push_back(cell);
  };
  for (std::size_t i = 0; i < region.size(); ++i) {
    const int cell = region[i];
    if (cell % kColumns > 0) enter(cell - 1);
    if (cell % kColumns < kColumns - 1) enter(cell + 1);
    if (cell >= kColumns) enter(cell - kColumns);
    if (cell < kColumns * (kRows - 1)) enter(cell + kColumns);
  }
  return region;
}

}  // namespace

bool IsRoomAt(const Vec3& place) { return IsRoom(FindSolids(false), place); }

std::vector<Vec3> FindShutPlaces() {
  const std::vector<Solid> solids = FindSolids(true);
  std::vector<bool> open(static_cast<std::size_t>(kColumns * kRows));
  for (int cell = 0; cell < kColumns * kRows; ++cell)
    open[static_cast<std::size_t>(cell)] = IsRoom(solids, PlaceOfCell(cell));
  std::vector<std::vector<int>> regions;
  for (int cell = 0; cell < kColumns * kRows; ++cell)
    if (open[static_cast<std::size_t>(cell)]) regions.push_back(TakeRegion(open, cell));
  std::sort(regions.begin(), regions.end(), [](const auto& a, const auto& b) { return a.size() > b.size(); });
  std::vector<Vec3> places;
  for (std::size_t i = 1; i < regions.size(); ++i) places.push_back(PlaceOfCell(regions[i][regions[i].size() / 2]));
  return places;
}

Vec3 ScatteredPlace(int number) {
  const std::vector<Solid> solids = FindSolids(false);
  Vec3 place;
  for (int tried = 0; tried < kMostTries; ++tried) {
    const double n = number + 1000.0 * tried;
    const auto x = static_cast<float>(std::fmod(0.5 + n * kSpreadX, 1.0));
    const auto y = static_cast<float>(std::fmod(0.5 + n * kSpreadY, 1.0));
    place = {(2.0f * x - 1.0f) * Ballistics::kFreeX, (2.0f * y - 1.0f) * Ballistics::kFreeY, 0.0f};
    if (IsRoom(solids, place)) break;
  }
  return place;
}
