#include "editor/acts/links.h"

#include "core/script_box.h"
#include "editor/bars/tweak_bar.h"
#include "physics/spring.h"
#include "physics/wobbly_puller.h"

using GalePhysics::Spring;
using GalePhysics::WobblyPuller;

namespace {

// The field of a follower on a bar of its own; the script itself shows it there alone.
std::uint32_t* FindLeader(TweakBar& bar, GameObject& object) {
  auto* scripts = object.Get<ScriptBox>();
  Script* follow = scripts == nullptr ? nullptr : scripts->GetScript("follow");
  if (follow == nullptr) return nullptr;
  follow->AddToTweakBar(bar);
  const TweakBar::Entry* entry = bar.Find("ID to follow");
  const auto* id = entry == nullptr ? nullptr : std::get_if<std::uint32_t*>(&entry->field.target);
  return id == nullptr ? nullptr : *id;
}

}  // namespace

std::optional<std::uint32_t> TargetOf(const GalePhysics::ForceGenerator& generator) {
  if (const auto* spring = dynamic_cast<const Spring*>(&generator))
    return spring->baseId < 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(spring->baseId));
  if (const auto* puller = dynamic_cast<const WobblyPuller*>(&generator)) return puller->targetId;
  return std::nullopt;
}

void SetTarget(GalePhysics::ForceGenerator& generator, std::uint32_t id) {
  if (auto* spring = dynamic_cast<Spring*>(&generator)) spring->baseId = static_cast<std::int32_t>(id);
  if (auto* puller = dynamic_cast<WobblyPuller*>(&generator)) puller->targetId = id;
}

std::optional<std::uint32_t> LeaderOf(GameObject& object) {
  TweakBar bar("links");
  const std::uint32_t* leader = FindLeader(bar, object);
  return leader == nullptr ? std::nullopt : std::optional(*leader);
}

void SetLeader(GameObject& object, std::uint32_t id) {
  TweakBar bar("links");
  if (std::uint32_t* leader = FindLeader(bar, object)) *leader = id;
}
