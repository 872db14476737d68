#include "editor/stage/handles.h"

#include <algorithm>
#include <cmath>

#include "core/object_manager.h"
#include "core/transform.h"
#include "editor/acts/history.h"
#include "input/input.h"
#include "physics/box_collider.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"

namespace {

constexpr float kReach = 9.0f;        // pixels around a handle that count
constexpr float kHandleSize = 5.0f;   // pixels from its middle to its edge
constexpr float kOut = 0.3f;          // world units that a handle stands outside what it changes
constexpr float kTurnArm = 0.9f;      // world units from the picture's top to the handle that turns
constexpr float kArrow = 0.3f;        // world units of arrow for a unit of velocity
constexpr float kArrowStart = 0.5f;   // world units from the object's place, where the arrow of no velocity ends
constexpr float kArrowHead = 0.25f;   // world units
constexpr float kLeastSize = 0.05f;   // world units
constexpr float kHalf = 0.70710678f;  // of a diagonal of length 1, along each axis

Vec3 MousePlace() { return {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f}; }

Vec3 Across(const Vec3& v) { return {v.x, v.y, 0.0f}; }

Vec3 DirectionOf(const Vec3& v) { return Length(Across(v)) > 0.0f ? Normalised(Across(v)) : Vec3{1.0f, 0.0f, 0.0f}; }

Vec3 ArrowTip(const Vec3& place, const Vec3& velocity) {
  return place + DirectionOf(velocity) * (kArrowStart + kArrow * Length(Across(velocity)));
}

Vec3 VelocityOfArrow(const Vec3& arrow, const Grid& grid) {
  const float speed = std::max(0.0f, Length(Across(arrow)) - kArrowStart) / kArrow;
  return DirectionOf(arrow) * std::max(0.0f, grid.Snapped(speed));
}

// From the middle to an edge, such that the whole size snaps.
float HalfSize(float place, const Grid& grid) {
  return std::max(kLeastSize, grid.Snapped(2.0f * (std::abs(place) - kOut))) / 2.0f;
}

float WithSignOf(float value, float sign) { return std::signbit(sign) ? -value : value; }

// Into the frame of an object that stands at the origin of its own.
Vec3 IntoFrame(const Form& form, const Vec3& place) {
  const float angle = AngleAboutZ(form.orientation);
  const Vec3 arm = Across(place - form.position);
  return {std::cos(angle) * arm.x + std::sin(angle) * arm.y, std::cos(angle) * arm.y - std::sin(angle) * arm.x, 0.0f};
}

}  // namespace

std::vector<Handles::Handle> Handles::HandlesOf(const GameObject& object) {
  const Form form = TakeForm(object);
  const Matrix33 turn = ToMatrix(form.orientation);
  const auto at = [&](const Vec3& own) { return form.position + turn * own; };
  const float halfWidth = std::abs(form.graphicsScale.x) / 2.0f;
  const float halfHeight = std::abs(form.graphicsScale.y) / 2.0f;
  std::vector<Handle> handles = {{Kind::kSize, at({halfWidth + kOut, halfHeight + kOut, 0.0f})},
                                 {Kind::kTurn, at({0.0f, halfHeight + kTurnArm, 0.0f})}};
  if (object.Get<GalePhysics::BoxCollider>() != nullptr)
    handles.push_back({Kind::kCollider, at({form.halfExtents.x + kOut, -form.halfExtents.y - kOut, 0.0f})});
  if (object.Get<GalePhysics::SphereCollider>() != nullptr)
    handles.push_back({Kind::kCollider, at(Vec3{kHalf, -kHalf, 0.0f} * (form.radius + kOut))});
  if (GalePhysics::FindCollider(object) != nullptr)
    handles.push_back({Kind::kBroadPhase, form.position - Vec3{form.broadPhaseSize + kOut, 0.0f, 0.0f}});
  if (object.Get<GalePhysics::RigidBody>() != nullptr)
    handles.push_back({Kind::kVelocity, ArrowTip(form.position, form.velocity)});
  return handles;
}

bool Handles::Press(const StageView& view, float x, float y) {
  const std::vector<GameObject*> selected = SelectedObjects();
  if (selected.size() != 1) return false;
  float nearest = kReach;
  for (const Handle& handle : HandlesOf(*selected.front())) {
    const auto pixel = view.Pixel(handle.place);
    const float distance = std::max(std::abs(pixel[0] - x), std::abs(pixel[1] - y));
    if (distance > nearest) continue;
    nearest = distance;
    pulled_ = {selected.front()->id, handle.kind, TakeForm(*selected.front()), Across(handle.place - MousePlace())};
  }
  released_ = false;
  return IsPulling();
}

Form Handles::Shaped(const GameObject& object, const Form& now, Kind kind, const Vec3& place, const Grid& grid) {
  Form shaped = now;
  const Vec3 own = IntoFrame(now, place);
  switch (kind) {
    case Kind::kSize:
      shaped.graphicsScale.x = WithSignOf(2.0f * HalfSize(own.x, grid), now.graphicsScale.x);
      shaped.graphicsScale.y = WithSignOf(2.0f * HalfSize(own.y, grid), now.graphicsScale.y);
      break;
    case Kind::kTurn: {
      const Vec3 arm = place - now.position;
      const float degrees = (std::atan2(arm.y, arm.x) - kPi / 2.0f) * 180.0f / kPi;
      shaped.orientation = QuaternionFromZ(Grid::SnappedTurn(degrees) * kPi / 180.0f);
      break;
    }
    case Kind::kCollider:
      if (object.Get<GalePhysics::BoxCollider>() != nullptr) {
        shaped.halfExtents.x = HalfSize(own.x, grid);
        shaped.halfExtents.y = HalfSize(own.y, grid);
      } else {
        shaped.radius = HalfSize(Length(own), grid);
      }
      break;
    case Kind::kBroadPhase:
      shaped.broadPhaseSize = HalfSize(Length(own), grid);
      break;
    case Kind::kVelocity:
      shaped.velocity = VelocityOfArrow(place - now.position, grid);
      break;
  }
  return shaped;
}

void Handles::Take(Form& to, const Form& from, Kind kind) {
  switch (kind) {
    case Kind::kSize:
      to.graphicsScale = from.graphicsScale;
      break;
    case Kind::kTurn:
      to.orientation = from.orientation;
      break;
    case Kind::kCollider:
      to.halfExtents = from.halfExtents;
      to.radius = from.radius;
      break;
    case Kind::kBroadPhase:
      to.broadPhaseSize = from.broadPhaseSize;
      break;
    case Kind::kVelocity:
      to.velocity = from.velocity;
      break;
  }
}

void Handles::Update(History& history, const Grid& grid) {
  if (!pulled_) return;
  GameObject* object = Objects().GetObject(pulled_->id);
  if (object != nullptr && !released_) {
    const Form now = TakeForm(*object);
    ChangeForm(*object, now, Shaped(*object, now, pulled_->kind, MousePlace() + pulled_->grip, grid));
  }
  if (object == nullptr || released_) End(history);
}

void Handles::End(History& history) {
  if (const GameObject* object = Objects().GetObject(pulled_->id)) {
    Form after = pulled_->before;
    Take(after, TakeForm(*object), pulled_->kind);
    history.RecordForm(pulled_->id, pulled_->before, after);
  }
  pulled_.reset();
}

void Handles::Stop(History& history) {
  if (pulled_) End(history);
}

void Handles::Draw(const StageView& view, std::vector<StageLine>& lines) const {
  using Ink = StageLine::Ink;
  const std::vector<GameObject*> selected = SelectedObjects();
  if (selected.size() != 1) return;
  const Form form = TakeForm(*selected.front());
  for (const Handle& handle : HandlesOf(*selected.front())) {
    if (handle.kind == Kind::kBroadPhase) {
      std::vector<Vec3> circle = CirclePoints(form.broadPhaseSize);
      for (Vec3& point : circle) point += form.position;
      lines.push_back(view.Line(circle, Ink::kTie));
    }
    if (handle.kind == Kind::kVelocity || handle.kind == Kind::kTurn)
      lines.push_back(view.Line({form.position, handle.place}, Ink::kHandle, false));
    const auto pixel = view.Pixel(handle.place);
    StageLine box{{}, Ink::kHandle, true, true};
    if (handle.kind == Kind::kVelocity) {
      const Vec3 along = DirectionOf(handle.place - form.position) * kArrowHead;
      const Vec3 side = {-along.y / 2.0f, along.x / 2.0f, 0.0f};
      box.points = view.Line({handle.place + along, handle.place + side, handle.place - side}, Ink::kHandle).points;
    } else {
      for (const auto& [x, y] : {std::pair{-1.0f, -1.0f}, {1.0f, -1.0f}, {1.0f, 1.0f}, {-1.0f, 1.0f}})
        box.points.push_back({pixel[0] + x * kHandleSize, pixel[1] + y * kHandleSize});
    }
    lines.push_back(std::move(box));
  }
}
