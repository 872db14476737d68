#include "match/player/prison_script.h"

#include <array>

#include "core/game_object.h"
#include "core/player_name.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/rigid_body.h"

namespace {
constexpr std::array<float, 4> kEntryX = {-2.0f, 2.0f, -4.0f, 4.0f};  // by player index, at y 0
constexpr float kOthersEntryX = 0.0f;
}  // namespace

void PrisonScript::Update(float /*step*/) {
  Vec3& p = owner->GetTransform().position;
  p.z = 0.0f;
  if (p.x >= corner_.x && p.x <= corner_.x + size_.x && p.y >= corner_.y - size_.y && p.y <= corner_.y) return;
  const auto player = static_cast<std::size_t>(PlayerIndexFromName(owner->name));
  p = {player < kEntryX.size() ? kEntryX[player] : kOthersEntryX, 0.0f, 0.0f};
  if (auto* body = owner->Get<GalePhysics::RigidBody>()) body->velocity = {};
}

void PrisonScript::Serialize(Serializer& writer) const {
  writer.WriteVec3(corner_);
  writer.WriteVec3(size_);
}

void PrisonScript::Deserialize(Serializer& reader) {
  corner_ = reader.ReadVec3();
  size_ = reader.ReadVec3();
}
