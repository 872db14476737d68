#include "tools/bots/lead_bot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "physics/math/matrix33.h"
#include "tools/bots/ballistics.h"
#include "tools/bots/outlook.h"

namespace {

constexpr float kWeakest = 2.5f;  // of a launch, units per body second
constexpr float kStrengthStep = 1.0f;
constexpr float kHitSpeed = 2.4f;  // at arrival: a hit pays from 2 on
constexpr float kTouchSpeed = 0.3f;
constexpr float kTouchShare = 0.8f;    // of both radii: how near a flight must come, the aim's error considered
constexpr float kSettle = 15.0f;       // frames that a launch costs beside charge and flight
constexpr float kRivalHabit = 40.0f;   // frames in which a rival will have changed its mind
constexpr float kHeldSeconds = 2.0f;   // game seconds for which what can be taken away is kept
constexpr float kStunCost = 3.0f;      // points that are not won in a stun's second
constexpr float kHillReach = 2.0f;     // world units from its middle within which it pays
constexpr float kOwnBallShare = 0.3f;  // of a strange ball's worth: one's own is only driven away from others
constexpr float kGuardShare = 0.5f;    // of it, for ramming who comes near
constexpr float kGuardReach = 5.0f;    // of a rival from the ball
constexpr float kHitReachX = 15.0f;    // world units: what is farther out cannot be hit from inside
constexpr float kHitReachY = 10.0f;
constexpr float kStopTime = 40.0f;  // frames of a launch to where it ends: the last stretch takes for ever
constexpr int kSolverSteps = 4;
constexpr int kSafetyStep = 8;     // frames
constexpr int kSafetyFrames = 48;  // of a flight that are looked at
constexpr int kDirections = 16;    // of a flight from rivals
constexpr std::array<float, 3> kFleeStrengths = {4.0f, 7.0f, 10.0f};
constexpr float kCalm = 6.0f;  // world units to the next rival with which the wearer is content

struct Goal {
  Vec3 place;  // as seen
  Vec3 velocity;
  float radius;   // of its middle's distance at which it is reached
  float arrival;  // least speed there
  float value;    // points
  bool stop = false;
  int track = -1;  // of what flies as players do; below 0: it keeps its speed
};

struct Choice {
  float worth = 0.0f;  // points a frame
  BotPlan plan;
};

class Chooser {
 public:
  explicit Chooser(const Outlook& outlook) : outlook_(outlook) {}

  BotPlan Choose() {
    for (const SeenThing& thing : outlook_.GetSight().things)
      if (thing.pays != nullptr && !thing.taken) AddGoals(thing);
    if (wears_) return Flee();
    for (const Goal& goal : goals_) Weigh(goal);
    return best_.plan;
  }

 private:
  void AddGoals(const SeenThing& thing);
  void AddHill(const SeenThing& hill);
  void AddBall(const SeenThing& ball);
  void AddRival(int player, float value);
  int AddTrack(const Vec3& place, const Vec3& velocity, float radius) {
    tracks_.push_back(outlook_.Follow(place, velocity, radius));
    return static_cast<int>(tracks_.size()) - 1;
  }
  Vec3 PlaceOf(const Goal& goal, int wait, float flight) const;
  void Weigh(const Goal& goal);
  void WeighStrength(const Goal& goal, float strength);
  float CountSwept(const Vec3& from, const Vec3& to, int wait) const;
  BotPlan Flee();
  float SafetyOf(const Vec3& from, const Vec3& aim, float strength, int wait) const;
  float GapToRivals(const Vec3& own, int frame) const;
  int WaitFor(float strength) const {
    return static_cast<int>(std::ceil(std::max(strength - outlook_.GetCharge(), 0.0f) / Ballistics::kChargeAFrame));
  }
  const SeenPlayer& PlayerAt(int index) const { return outlook_.GetSight().players[static_cast<std::size_t>(index)]; }

  const Outlook& outlook_;
  std::vector<Goal> goals_;
  std::vector<Outlook::Track> tracks_;
  bool wears_ = false;
  Choice best_;
};

void Chooser::AddGoals(const SeenThing& thing) {
  const float reach = (thing.radius + Ballistics::kPlayerRadius) * kTouchShare;
  const float points = thing.pays->points;
  switch (thing.pays->how) {
    case Pays::kHit:
      goals_.push_back({thing.place, thing.velocity, reach, kHitSpeed, points});
      break;
    case Pays::kTouch:
      goals_.push_back({thing.place, thing.velocity, reach, kTouchSpeed, points});
      break;
    case Pays::kStay:
      AddHill(thing);
      break;
    case Pays::kOwn:
      AddBall(thing);
      break;
    case Pays::kWear: {
      const int wearer = WearerOf(thing, outlook_.GetSight());
      wears_ = wearer == outlook_.GetPlayer();
      if (!wears_) AddRival(wearer, points * kHeldSeconds);
    }
  }
}

void Chooser::AddRival(int player, float value) {
  if (player < 0 || !PlayerAt(player).there) return;
  const SeenPlayer& rival = PlayerAt(player);
  goals_.push_back({rival.place, rival.velocity, 2.0f * Ballistics::kPlayerRadius * kTouchShare, kHitSpeed, value,
                    false, AddTrack(rival.place, rival.velocity, Ballistics::kPlayerRadius)});
}

// A rival on it keeps everybody from it, and is stunned by a hit.
void Chooser::AddHill(const SeenThing& hill) {
  const float value = hill.pays->points * kHeldSeconds;
  for (int player = 0; player < kPlayers; ++player)
    if (player != outlook_.GetPlayer() && PlayerAt(player).there &&
        Length(PlayerAt(player).place - hill.place) < kHillReach)
      AddRival(player, value);
  const Vec3& end = outlook_.OwnPlace(Outlook::kFrames);
  if (Length(end - Vec3{hill.place.x, hill.place.y, 0.0f}) > kHillReach)
    goals_.push_back({hill.place, {}, 0.0f, 0.0f, value, true});
}

// The owner of the ball drives off whoever comes near it.
void Chooser::AddBall(const SeenThing& ball) {
  const float value = ball.pays->points * kHeldSeconds;
  const float reach = (ball.radius + Ballistics::kPlayerRadius) * kTouchShare;
  const bool own = ball.pays->owner == outlook_.GetPlayer();
  goals_.push_back({ball.place, ball.velocity, reach, kHitSpeed, own ? kOwnBallShare * value : value, false,
                    AddTrack(ball.place, ball.velocity, ball.radius)});
  if (!own) return;
  for (int player = 0; player < kPlayers; ++player)
    if (player != outlook_.GetPlayer() && Length(PlayerAt(player).place - ball.place) < kGuardReach)
      AddRival(player, kGuardShare * value);
}

Vec3 Chooser::PlaceOf(const Goal& goal, int wait, float flight) const {
  Vec3 place;
  if (goal.track < 0) {
    place = outlook_.PlaceOf(goal.place, goal.velocity, wait, flight);
  } else {
    const int frame = std::min(wait + static_cast<int>(flight), Outlook::kFrames - 1);
    place = tracks_[static_cast<std::size_t>(goal.track)][static_cast<std::size_t>(frame)];
  }
  place.z = 0.0f;
  return place;
}

void Chooser::Weigh(const Goal& goal) {
  if (goal.stop) {
    const float distance = Length(goal.place - outlook_.OwnPlace(0));
    WeighStrength(goal,
                  std::clamp(distance / Ballistics::ReachOfLaunch(), outlook_.GetCharge(), Ballistics::kFullCharge));
    return;
  }
  float strength = std::max(outlook_.GetCharge(), kWeakest);
  while (strength < Ballistics::kFullCharge + kStrengthStep) {
    WeighStrength(goal, std::min(strength, Ballistics::kFullCharge));
    strength += kStrengthStep;
  }
}

void Chooser::WeighStrength(const Goal& goal, float strength) {
  const int wait = WaitFor(strength);
  const Vec3& from = outlook_.OwnPlace(wait);
  float flight = 0.0f;
  Vec3 to;
  for (int i = 0; i < kSolverSteps; ++i) {
    to = PlaceOf(goal, wait, flight);
    const float distance = std::max(Length(to - from) - goal.radius, 0.0f);
    if (Ballistics::SpeedAfter(distance, strength) < goal.arrival && !goal.stop) return;
    flight = goal.stop ? kStopTime : Ballistics::FramesTo(distance, strength);
    if (flight < 0.0f) return;
  }
  if (std::abs(to.x) > kHitReachX || std::abs(to.y) > kHitReachY || outlook_.IsBlocked(from, to)) return;
  const float time = static_cast<float>(wait) + flight;
  float value = goal.value;
  if (goal.arrival == kTouchSpeed)
    value = CountSwept(from, from + Normalised(to - from) * (strength * Ballistics::ReachOfLaunch()), wait);
  if (goal.track >= 0) value *= kRivalHabit / (kRivalHabit + time);
  if (outlook_.IsDangerous(from, to, wait, flight)) value -= kStunCost;
  const float worth = value / (time + kSettle);
  if (worth <= best_.worth) return;
  best_ = {worth, {true, false, Normalised(to - from), strength, outlook_.OwnPlace(0)}};
}

// What pays for a touch and lies along the way.
float Chooser::CountSwept(const Vec3& from, const Vec3& to, int wait) const {
  const Vec3 way = to - from;
  const float length = Length(way);
  float points = 0.0f;
  for (const Goal& goal : goals_) {
    if (goal.arrival != kTouchSpeed) continue;
    const Vec3 place = outlook_.PlaceOf(goal.place, goal.velocity, wait, 0.0f) - from;
    const float along = Dot(place, way) / length;
    if (along < 0.0f || along > length) continue;
    if (Length(place - way * (along / length)) < goal.radius) points += goal.value;
  }
  return points;
}

float Chooser::GapToRivals(const Vec3& own, int frame) const {
  float gap = kCalm * 10.0f;
  for (const Outlook::Track& track : tracks_)
    gap = std::min(gap, Length(track[static_cast<std::size_t>(std::min(frame, Outlook::kFrames - 1))] - own));
  return gap;
}

// The smallest distance to a rival during charge and flight; without an aim, of who stays on its way.
float Chooser::SafetyOf(const Vec3& from, const Vec3& aim, float strength, int wait) const {
  float safety = kCalm * 10.0f;
  for (int frame = 0; frame < wait; frame += kSafetyStep)
    safety = std::min(safety, GapToRivals(outlook_.OwnPlace(frame), frame));
  for (int flight = kSafetyStep; flight <= kSafetyFrames; flight += kSafetyStep) {
    const float flown = strength * Ballistics::ReachOfLaunch() *
                        (1.0f - std::pow(Ballistics::KeptAFrame(), static_cast<float>(flight)));
    const Vec3 own = strength > 0.0f ? from + aim * flown : outlook_.OwnPlace(flight);
    if (!Ballistics::IsInside(own)) return 0.0f;
    safety = std::min(safety, GapToRivals(own, wait + flight));
  }
  return safety;
}

BotPlan Chooser::Flee() {
  tracks_.clear();
  for (int player = 0; player < kPlayers; ++player)
    if (player != outlook_.GetPlayer() && PlayerAt(player).there)
      AddTrack(PlayerAt(player).place, PlayerAt(player).velocity, Ballistics::kPlayerRadius);
  BotPlan plan;
  plan.charge = true;
  plan.from = outlook_.OwnPlace(0);
  float best = SafetyOf(outlook_.OwnPlace(0), {}, 0.0f, 0);
  if (best > kCalm) return plan;
  for (const float strength : kFleeStrengths) {
    const float charged = std::max(strength, outlook_.GetCharge());
    const int wait = WaitFor(charged);
    const Vec3& from = outlook_.OwnPlace(wait);
    for (int i = 0; i < kDirections; ++i) {
      const float angle = static_cast<float>(i) * (2.0f * kPi / kDirections);
      const Vec3 aim = {std::cos(angle), std::sin(angle), 0.0f};
      const Vec3 to = from + aim * (charged * Ballistics::ReachOfLaunch());
      const float safety = SafetyOf(from, aim, charged, wait);
      if (safety <= best || outlook_.IsBlocked(from, to)) continue;
      best = safety;
      plan = {true, true, aim, charged, outlook_.OwnPlace(0)};
    }
  }
  return plan;
}

}  // namespace

BotPlan LeadBot::Think(const Sight& sight, const BotMind& mind) {
  if (!sight.players[static_cast<std::size_t>(mind.player)].there) return {};
  const Outlook outlook(sight, mind);
  return Chooser(outlook).Choose();
}
