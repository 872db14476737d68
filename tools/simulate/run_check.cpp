#include "tools/simulate/run_check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <utility>

#include "audio/audio.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/episode/new_game.h"
#include "match/players.h"
#include "match/score/point_bubble.h"
#include "match/score/point_movment.h"
#include "match/score/score_displays.h"
#include "match/score/score_script.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"

namespace {

[[gnu::format(printf, 1, 2)]] std::string Told(const char* format, ...) {
  std::array<char, 256> text;
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  return text.data();
}

std::string NameOf(const GameObject& object) { return Told("object %u \"%s\": ", object.id, object.name.c_str()); }

std::string TellVec3(const char* what, const Vec3& v) {
  return Told("its %s is %g %g %g", what, static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z));
}

std::string CheckPlace(const Transform& transform) {
  if (!IsFinite(transform.position)) return TellVec3("position", transform.position);
  if (!IsFinite(transform.graphicsScale)) return TellVec3("graphics scale", transform.graphicsScale);
  const Quaternion& q = transform.orientation;
  if (!std::isfinite(q.r + q.i + q.j + q.k)) return "its orientation is not finite";
  const auto isFar = [](float place) { return std::abs(place) > RunCheck::kFarthest; };
  const Vec3& p = transform.position;
  return isFar(p.x) || isFar(p.y) || isFar(p.z) ? TellVec3("position, out of all bounds,", p) : std::string{};
}

std::string CheckBody(const GalePhysics::RigidBody& body) {
  if (!IsFinite(body.velocity)) return TellVec3("velocity", body.velocity);
  if (!IsFinite(body.angularVelocity)) return TellVec3("angular velocity", body.angularVelocity);
  if (!IsFinite(body.acceleration)) return TellVec3("acceleration", body.acceleration);
  if (!std::isfinite(body.inverseMass) || body.inverseMass < 0.0f)
    return Told("its inverse mass is %g", static_cast<double>(body.inverseMass));
  if (!std::isfinite(body.damping)) return "its damping is not finite";
  return {};
}

std::string CheckObject(const GameObject& object) {
  if (std::string fault = CheckPlace(object.GetTransform()); !fault.empty()) return fault;
  if (const auto* body = object.Get<GalePhysics::RigidBody>())
    if (std::string fault = CheckBody(*body); !fault.empty()) return fault;
  const GalePhysics::Collider* collider = GalePhysics::FindCollider(object);
  if (collider != nullptr && !std::isfinite(collider->broadPhaseSize)) return "its collider's size is not finite";
  return {};
}

template <class ScriptType>
const ScriptType* FindScript(const GameObject& object, const char* name) {
  const ScriptBox* box = object.Get<ScriptBox>();
  return box == nullptr ? nullptr : static_cast<const ScriptType*>(box->GetScript(name));
}

// The IDs of the four displays; none while one of them is missing or no match runs.
std::optional<RunCheck::Displays> FindDisplays() {
  RunCheck::Displays displays{};
  for (std::size_t player = 0; player < displays.size(); ++player) {
    const GameObject* display = IsMatchRunning() ? Objects().FindObjectByName(kScoreObjects[player]) : nullptr;
    if (display == nullptr || !display->alive) return std::nullopt;
    displays[player] = display->id;
  }
  return displays;
}

// What the displays show and what is on its way to them.
long long CountPoints(const RunCheck::Displays& displays) {
  long long points = 0;
  for (const auto& object : Objects().GetObjects()) {
    if (std::find(displays.begin(), displays.end(), object->id) != displays.end())
      if (const auto* score = FindScript<ScoreScript>(*object, "ScoreScript")) points += score->GetPoints();
    if (const auto* bubble = FindScript<PointMovment>(*object, "pointmovment"))
      if (std::find(displays.begin(), displays.end(), bubble->GetCreditTarget()) != displays.end())
        points += bubble->GetValue();
  }
  return points;
}

}  // namespace

std::string RunCheck::Check() {
  const auto& objects = Objects().GetObjects();
  if (objects.size() > kMostObjects) return Told("there are %zu objects", objects.size());
  if (!Audio::HasRoom()) return "no sound can be started any more: nothing that has ended makes room";
  std::unordered_set<std::uint32_t> ids;
  std::unordered_set<std::uint32_t> dead;
  for (const auto& object : objects) {
    if (!ids.insert(object->id).second) return NameOf(*object) + "another one has its ID";
    if (!object->alive) dead.insert(object->id);
    if (!object->alive && dead_.contains(object->id)) return NameOf(*object) + "it is dead and stays";
    if (const std::string fault = CheckObject(*object); !fault.empty()) return NameOf(*object) + fault;
  }
  dead_ = std::move(dead);
  return CheckPoints();
}

// Every point that was awarded in a match is shown or on its way.
std::string RunCheck::CheckPoints() {
  const std::optional<Displays> displays = FindDisplays();
  const bool begins = displays && displays != displays_;
  displays_ = displays;
  if (!displays) return {};
  const long long points = CountPoints(*displays);
  const long long gone = GetPointsAwarded() - points;
  if (begins) pointsBefore_ = gone;
  if (gone == pointsBefore_) return {};
  return Told("%lld points were awarded in this match, and %lld are shown or on their way",
              GetPointsAwarded() - pointsBefore_, points);
}

void CheckingObserver::EndFrame(int frame) {
  ++frames_;
  std::array<std::int16_t, 2 * Audio::kRate / kFramesASecond> unheard;
  if (hears_) Audio::Render(unheard);
  const std::string fault = check_.Check();
  if (fault.empty()) return;
  fault_ = "frame " + std::to_string(frame) + ": " + fault;
  GetPlatform().running = false;
}
