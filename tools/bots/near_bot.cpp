#include "tools/bots/near_bot.h"

#include <algorithm>

#include "tools/bots/ballistics.h"

namespace {

constexpr float kArrivalSpeed = 3.0f;  // units per body second: a hit pays from 2 on
constexpr float kWeakest = 3.0f;
constexpr float kOnIt = 1.5f;  // world units from the middle of what pays for staying

struct Goal {
  Vec3 way;
  float distance = 1e9f;
  bool stay = false;
};

void Consider(Goal& best, const Vec3& from, const Vec3& place, bool stay) {
  const Vec3 way = {place.x - from.x, place.y - from.y, 0.0f};
  if (const float distance = Length(way); distance < best.distance) best = {way, distance, stay};
}

}  // namespace

BotPlan NearBot::Think(const Sight& sight, const BotMind& mind) {
  const SeenPlayer& me = sight.players[static_cast<std::size_t>(mind.player)];
  Goal goal;
  for (const SeenThing& thing : sight.things) {
    if (thing.pays == nullptr || thing.taken || !Ballistics::IsInside(thing.place)) continue;
    if (thing.pays->how == Pays::kOwn && thing.pays->owner == mind.player) continue;
    if (thing.pays->how == Pays::kWear && WearerOf(thing, sight) == mind.player) continue;
    Consider(goal, me.place, thing.place, thing.pays->how == Pays::kStay);
  }
  if (!me.there || goal.distance > 1e8f || (goal.stay && goal.distance < kOnIt)) return {};
  const float reach = goal.distance / Ballistics::ReachOfLaunch();
  const float strength = goal.stay ? reach : std::max(kWeakest, reach + kArrivalSpeed);
  return {true, false, Normalised(goal.way), std::min(strength, Ballistics::kFullCharge), me.place};
}
