#include "match/score/point_earner.h"

#include "core/script_box.h"
#include "match/players.h"

PointEarner* FindPointEarner(const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : dynamic_cast<PointEarner*>(scripts->GetScript("CharacterController"));
}

void AwardPoints(int player, int points, const Vec3& origin) {
  const GameObject* object = GetPlayerObject(player);
  if (PointEarner* earner = object == nullptr ? nullptr : FindPointEarner(*object)) earner->AddPoints(points, origin);
}
