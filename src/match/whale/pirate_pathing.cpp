#include "match/whale/pirate_pathing.h"

#include "core/game_object.h"
#include "core/random.h"
#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "physics/rigid_body.h"
#include "scripts/hazards/fountain.h"

namespace {

constexpr float kPause = 2.5f;        // seconds of game time from one placing to the next, sweeps not counted
constexpr float kEdgeX = 26.0f;       // where a pass begins and a sweep ends, on either side
constexpr float kCruiseSpeed = 4.0f;  // units per body second
constexpr float kCrawlSpeed = 0.2f;
constexpr float kCrawlTime = 0.5f;     // seconds of game time
constexpr float kQuarterTurn = 1.57f;  // radians: the picture's nose is up, and it swims sideways
constexpr float kStopRange = 2.0f;     // world units from the middle to where a sweep halts, at most
constexpr Vec3 kSize = {3.0f, 8.0f, 0.0f};

using SweepState = WhaleCourse::SweepState;

WhaleCourse& Course() {
  static SceneState<WhaleCourse> course;
  return *course;
}

// How much of the crawl is left in the speed; an ease-out curve of the time.
float CrawlShare() {
  const float left = 1.0f - Course().timer / kCrawlTime;
  return Course().timer < kCrawlTime ? 1.0f - left * left : 0.0f;
}

}  // namespace

PiratePathing::PiratePathing() { Course() = {}; }

const WhaleCourse& PiratePathing::GetCourse() { return Course(); }

// A whale that is dead already leaves the course to the next one.
void PiratePathing::Update(float step) {
  if (!owner->alive) return;
  WhaleCourse& course = Course();
  if (course.pause > 0.0f) {
    if (course.sweeping) {
      Sweep(step);
      return;
    }
    course.pause -= step;
  }
  if (course.pause > 0.0f) return;
  if (finished_)
    owner->alive = false;
  else
    Place();
}

// A plain pass turns round for the next one at once, a sweep does when it is over.
void PiratePathing::Place() {
  WhaleCourse& course = Course();
  const float direction = course.Direction();
  const int pattern = course.TakePattern();
  Transform& transform = owner->GetTransform();
  transform.graphicsScale = {direction * kSize.x, kSize.y, kSize.z};
  transform.position = {-direction * kEdgeX, WhaleCourse::RowOf(pattern), 0.0f};
  transform.orientation = QuaternionFromZ(-direction * kQuarterTurn);
  if (auto* body = owner->Get<GalePhysics::RigidBody>()) body->velocity = {direction * kCruiseSpeed, 0.0f, 0.0f};
  Erupt();
  if (WhaleCourse::IsSweep(pattern))
    course.sweeping = true;
  else
    course.rightward = !course.rightward;
  course.pause = kPause;
}

void PiratePathing::Erupt() const {
  TurnFountainsOn();
  if (Script* fountain = owner->Get<ScriptBox>()->GetScript("fountain")) static_cast<Fountain*>(fountain)->Trigger();
}

// One state an update. The speed comes back in a single step, to 97 % of what it was.
void PiratePathing::Sweep(float step) {
  auto* body = owner->Get<GalePhysics::RigidBody>();
  if (body == nullptr) return;
  WhaleCourse& course = Course();
  float& speed = body->velocity.x;
  const SweepState state = course.sweepState;
  switch (state) {
    case SweepState::kBegin:
      course.stopX = RandomAround(kStopRange);
      course.cruiseSpeed = speed;
      course.Enter(SweepState::kApproach);
      break;
    case SweepState::kApproach:
      if (HasReached(course.stopX)) course.Enter(SweepState::kSlowDown);
      break;
    case SweepState::kSlowDown:
      speed = course.Direction() * kCrawlSpeed;
      Erupt();
      course.Enter(SweepState::kCrawl);
      break;
    case SweepState::kCrawl:
      if (course.timer >= kCrawlTime) course.Enter(SweepState::kSpeedUp);
      break;
    case SweepState::kSpeedUp:
      speed = (1.0f - CrawlShare()) * course.cruiseSpeed + CrawlShare() * speed;
      course.Enter(SweepState::kLeave);
      break;
    case SweepState::kLeave:
      if (HasReached(course.Direction() * kEdgeX)) course.TurnRound();
      break;
  }
  if (state >= SweepState::kSlowDown && state <= SweepState::kSpeedUp) course.timer += step;
}

bool PiratePathing::HasReached(float x) const {
  return (owner->GetTransform().position.x - x) * Course().Direction() >= 0.0f;
}
