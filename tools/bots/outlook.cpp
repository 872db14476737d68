#include "tools/bots/outlook.h"

#include <algorithm>

#include "tools/bots/ballistics.h"

namespace {

constexpr float kSafeGap = 0.4f;  // world units beside what stuns
constexpr float kBounce = 2.0f;   // of what stands fast: between sand's 1.5 and a bumper's 2.5
constexpr int kSamples = 5;       // of a flight

float DistanceToSegment(const Vec3& point, const Vec3& from, const Vec3& to) {
  const Vec3 way = to - from;
  const float length = SquaredLength(way);
  const float share = length > 0.0f ? std::clamp(Dot(point - from, way) / length, 0.0f, 1.0f) : 0.0f;
  return Length(point - (from + way * share));
}

}  // namespace

Outlook::Outlook(const Sight& sight, const BotMind& mind)
    : sight_(sight), player_(mind.player), charge_(mind.charge), age_(mind.frame - sight.frame) {
  const SeenPlayer& seen = sight.players[static_cast<std::size_t>(mind.player)];
  Vec3 place = seen.place;
  Vec3 velocity = seen.velocity;
  for (int frame = sight.frame; frame < mind.frame; ++frame) {
    if (frame == mind.launchFrame) velocity = mind.launch;
    Drift(place, velocity, Ballistics::kPlayerRadius);
  }
  for (Vec3& own : own_) {
    own = place;
    Drift(place, velocity, Ballistics::kPlayerRadius);
  }
}

Outlook::Track Outlook::Follow(const Vec3& place, const Vec3& velocity, float radius) const {
  Vec3 p = place;
  Vec3 v = velocity;
  for (int frame = 0; frame < age_; ++frame) Drift(p, v, radius);
  Track track;
  for (Vec3& ahead : track) {
    ahead = p;
    Drift(p, v, radius);
  }
  return track;
}

void Outlook::Drift(Vec3& place, Vec3& velocity, float radius) const {
  Ballistics::Drift(place, velocity, sight_.units);
  for (const SeenThing& obstacle : sight_.obstacles) {
    const Vec3 way = {place.x - obstacle.place.x, place.y - obstacle.place.y, 0.0f};
    const float touch = obstacle.radius + radius;
    if (SquaredLength(way) > touch * touch) continue;
    const Vec3 normal = Normalised(way);
    const float approach = Dot(velocity, normal);
    place = place + normal * (touch - Length(way));
    if (approach < 0.0f) velocity -= normal * (approach * (1.0f + kBounce));
  }
}

const Vec3& Outlook::OwnPlace(int frames) const {
  return own_[static_cast<std::size_t>(std::clamp(frames, 0, kFrames - 1))];
}

Vec3 Outlook::PlaceOf(const Vec3& place, const Vec3& velocity, int frames, float flight) const {
  return place + velocity * (static_cast<float>(age_ + frames) * sight_.units + flight * Ballistics::UnitsAFrame());
}

bool Outlook::IsBlocked(const Vec3& from, const Vec3& to) const {
  return std::any_of(sight_.obstacles.begin(), sight_.obstacles.end(), [&](const SeenThing& obstacle) {
    return DistanceToSegment(obstacle.place, from, to) < obstacle.radius + Ballistics::kPlayerRadius;
  });
}

bool Outlook::IsDangerous(const Vec3& from, const Vec3& to, int wait, float flight) const {
  return std::any_of(sight_.things.begin(), sight_.things.end(), [&](const SeenThing& thing) {
    if (!thing.stuns) return false;
    for (int i = 0; i <= kSamples; ++i) {
      const float share = static_cast<float>(i) / kSamples;
      const Vec3 own = from + (to - from) * share;
      const Vec3 other = PlaceOf(thing.place, thing.velocity, wait, flight * share);
      if (Length(other - own) < thing.radius + Ballistics::kPlayerRadius + kSafeGap) return true;
    }
    return false;
  });
}
