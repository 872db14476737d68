#include "editor/stage/ties.h"

#include <algorithm>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "editor/acts/links.h"
#include "physics/rigid_body.h"
#include "scripts/spawners/spawns_objects.h"

namespace {

using Ink = StageLine::Ink;

constexpr float kArrow = 0.3f;      // world units of arrow for a unit of velocity
constexpr float kArrowHead = 0.4f;  // world units

class TieDrawing {
 public:
  TieDrawing(const StageView& view, std::vector<StageLine>& lines) : view_(view), lines_(lines) {}

  void Connect(const GameObject& from, std::uint32_t id) {
    const GameObject* to = Objects().GetObject(id);
    if (to == nullptr || to == &from) return;
    lines_.push_back(view_.Line({from.GetTransform().position, to->GetTransform().position}, Ink::kTie, false));
    lines_.push_back(view_.Line(ShapeOf(*to), Ink::kTie));
  }

  void Spawner(const GameObject& object, const SpawnsObjects& spawner) {
    const Vec3& place = object.GetTransform().position;
    const Vec3 range = {0.0f, spawner.yRange, 0.0f};
    lines_.push_back(view_.Line({place - range, place + range}, Ink::kTie, false));
    const Vec3 tip = place + spawner.spawnVelocity * kArrow;
    const Vec3 along = Normalised(spawner.spawnVelocity) * kArrowHead;
    const Vec3 side = {-along.y / 2.0f, along.x / 2.0f, 0.0f};
    lines_.push_back(view_.Line({place, tip}, Ink::kTie, false));
    StageLine head = view_.Line({tip + along, tip + side, tip - side}, Ink::kTie);
    head.text = spawner.archetypeName;
    lines_.push_back(std::move(head));
  }

 private:
  const StageView& view_;
  std::vector<StageLine>& lines_;
};

bool HangsOn(const GameObject& object, std::uint32_t id) {
  const auto* body = object.Get<GalePhysics::RigidBody>();
  return body != nullptr && std::any_of(body->generators.begin(), body->generators.end(),
                                        [&](const auto* generator) { return TargetOf(*generator) == id; });
}

}  // namespace

void DrawTies(const StageView& view, std::vector<StageLine>& lines) {
  TieDrawing drawing(view, lines);
  for (GameObject* object : SelectedObjects()) {
    if (const auto* body = object->Get<GalePhysics::RigidBody>())
      for (const GalePhysics::ForceGenerator* generator : body->generators)
        if (const auto target = TargetOf(*generator)) drawing.Connect(*object, *target);
    for (const auto& other : Objects().GetObjects())
      if (HangsOn(*other, object->id)) drawing.Connect(*other, object->id);
    if (const auto leader = LeaderOf(*object)) drawing.Connect(*object, *leader);
    const auto* scripts = object->Get<ScriptBox>();
    if (const Script* spawner = scripts == nullptr ? nullptr : scripts->GetScript("spawner"))
      drawing.Spawner(*object, static_cast<const SpawnsObjects&>(*spawner));
  }
}
