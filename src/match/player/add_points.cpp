// How CharacterController turns an award into bubbles.
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/player/character_controller.h"
#include "match/players.h"
#include "match/score/point_bubble.h"
#include "match/score/scoring.h"

namespace {

constexpr char kUnknownDisplay[] = "Errar";
long long pointsAwarded = 0;

}  // namespace

void CharacterController::AddPoints(int points, const Vec3& origin) {
  if (scoreName_ == kUnknownDisplay || points <= 0 || !IsPlayerIndex(controller_)) return;
  if (Objects().GetObject(scoreObjectId_) == nullptr) return;
  pointsAwarded += points;
  const Vec3& place = origin == Vec3{} ? owner->GetTransform().position : origin;
  CreatePointBubbles(points, controller_, place, scoreObjectId_);
}

long long GetPointsAwarded() { return pointsAwarded; }

CharacterController* FindController(const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<CharacterController*>(scripts->GetScript("CharacterController"));
}
