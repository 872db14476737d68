#include "match/rules/objective_factory.h"

#include "match/rules/cannon_fall.h"
#include "match/rules/collect_the_rings.h"
#include "match/rules/get_the_crown.h"
#include "match/rules/hit_objects.h"
#include "match/rules/king_of_the_hill.h"
#include "match/rules/lord_of_the_beach_ball.h"
#include "match/rules/null_objective.h"
#include "match/rules/octo_miners.h"
#include "match/rules/whale_boss.h"

namespace {

struct ObjectiveType {
  const char* name;
  const char* title;
  int seconds;
  std::unique_ptr<Objective> (*create)(const char* title, int seconds);
};

template <class T>
std::unique_ptr<Objective> Create(const char* title, int seconds) {
  return std::make_unique<T>(title, seconds);
}

// Every rule that a level may name.
constexpr ObjectiveType kTypes[] = {
    {"CannonFall", "Watch out for the cannonballs!", 10, Create<CannonFall>},
    {"HitObjects", "HIT STUFF, GET POINTS", 10, Create<HitObjects>},
    {"KingOfTheHill", "Stay in the circle!", 20, Create<KingOfTheHill>},
    {"Crown", "Steal the Crown!", 20, Create<GetTheCrown>},
    {"CollectTheRings", "Collect the Rings", 20, Create<CollectTheRings>},
    {"OctoMiners", "Get The Golden Fish!", 10, Create<OctoMiners>},
    {"WhaleBoss", "Knock the barnacles off the whale!", 10, Create<WhaleBoss>},
    {"lotbb", "Touch The Ball!", 20, Create<LordOfTheBeachBall>},
    {"NULL", "", 10, Create<NullObjective>},
};

}  // namespace

std::unique_ptr<Objective> CreateObjective(std::string_view typeName) {
  for (const ObjectiveType& type : kTypes) {
    if (typeName != type.name) continue;
    auto objective = type.create(type.title, type.seconds);
    objective->typeName = type.name;
    return objective;
  }
  return nullptr;
}

std::vector<std::string_view> ObjectiveNames() {
  std::vector<std::string_view> names;
  for (const ObjectiveType& type : kTypes) names.emplace_back(type.name);
  return names;
}
