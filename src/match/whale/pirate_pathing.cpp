#include "match/whale/pirate_pathing.h"

#include <utility>

#include "core/game_object.h"
#include "core/random.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "physics/rigid_body.h"
#include "scripts/hazards/fountain.h"

namespace {

constexpr float kPause = 2.5f;        // seconds of game time from one placing to the next, sweeps not counted
constexpr float kEdgeX = 26.0f;       // where a pass begins and a sweep ends, on either side
constexpr float kCruiseSpeed = 4.0f;  // units per second
constexpr float kCrawlSpeed = 0.2f;
constexpr float kCrawlTime = 0.5f;     // seconds of game time
constexpr float kQuarterTurn = 1.57f;  // radians: the picture's nose is up, and it swims sideways
constexpr Vec3 kSize = {3.0f, 8.0f, 0.0f};
constexpr int kSwaps = 10;
constexpr int kFirstSweep = 3;  // patterns from this on halt in the middle
constexpr std::array<float, WhaleCourse::kPatterns> kRowY = {-3.3f, -6.3f, -10.43f, -10.43f, -6.3f, -3.3f};

enum SweepState { kBegin, kApproach, kSlowDown, kCrawl, kSpeedUp, kLeave };

WhaleCourse& Course() {
  static WhaleCourse course;
  return course;
}

float Direction() { return Course().rightward ? 1.0f : -1.0f; }

int RandomIndex() { return Random() % WhaleCourse::kPatterns; }

int TakePattern() {
  WhaleCourse& course = Course();
  if (course.taken == WhaleCourse::kPatterns) {
    for (int i = 0; i < WhaleCourse::kPatterns; ++i) course.patterns[static_cast<std::size_t>(i)] = i;
    for (int i = 0; i < kSwaps; ++i) {
      const int first = RandomIndex();
      int second = first;
      while (second == first) second = RandomIndex();
      std::swap(course.patterns[static_cast<std::size_t>(first)], course.patterns[static_cast<std::size_t>(second)]);
    }
    course.taken = 0;
  }
  return course.patterns[static_cast<std::size_t>(course.taken++)];
}

void Enter(SweepState state) {
  Course().sweepState = state;
  Course().timer = 0.0f;
}

void TurnRound() {
  WhaleCourse& course = Course();
  course.rightward = !course.rightward;
  course.sweeping = false;
  Enter(kBegin);
}

// How much of the crawl is left in the speed; an ease-out curve of the time.
float CrawlShare() {
  const float left = 1.0f - Course().timer / kCrawlTime;
  return Course().timer < kCrawlTime ? 1.0f - left * left : 0.0f;
}

// Between -2 and 2.
float RandomStop() { return static_cast<float>(Random()) / (static_cast<float>(kRandomMax) / 4.0f) - 2.0f; }

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
  const float direction = Direction();
  const int pattern = TakePattern();
  Transform& transform = owner->GetTransform();
  transform.graphicsScale = {direction * kSize.x, kSize.y, kSize.z};
  transform.position = {-direction * kEdgeX, kRowY[static_cast<std::size_t>(pattern)], 0.0f};
  transform.orientation = QuaternionFromZ(-direction * kQuarterTurn);
  if (auto* body = owner->Get<GalePhysics::RigidBody>()) body->velocity = {direction * kCruiseSpeed, 0.0f, 0.0f};
  Erupt();
  if (pattern < kFirstSweep)
    course.rightward = !course.rightward;
  else
    course.sweeping = true;
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
  const int state = course.sweepState;
  switch (state) {
    case kBegin:
      course.stopX = RandomStop();
      course.cruiseSpeed = speed;
      Enter(kApproach);
      break;
    case kApproach:
      if (HasReached(course.stopX)) Enter(kSlowDown);
      break;
    case kSlowDown:
      speed = Direction() * kCrawlSpeed;
      Erupt();
      Enter(kCrawl);
      break;
    case kCrawl:
      if (course.timer >= kCrawlTime) Enter(kSpeedUp);
      break;
    case kSpeedUp:
      speed = (1.0f - CrawlShare()) * course.cruiseSpeed + CrawlShare() * speed;
      Enter(kLeave);
      break;
    case kLeave:
      if (HasReached(Direction() * kEdgeX)) TurnRound();
      break;
  }
  if (state >= kSlowDown && state <= kSpeedUp) course.timer += step;
}

bool PiratePathing::HasReached(float x) const { return (owner->GetTransform().position.x - x) * Direction() >= 0.0f; }
