// Which other object a generator or a script refers to, by ID.
#pragma once

#include <cstdint>
#include <optional>

#include "core/game_object.h"
#include "physics/force_generator.h"

/// The anchor of a spring or the target of a puller; nothing for another generator or one that has none.
std::optional<std::uint32_t> TargetOf(const GalePhysics::ForceGenerator& generator);
void SetTarget(GalePhysics::ForceGenerator& generator, std::uint32_t id);

/// Whom the object's script "follow" follows; nothing without one.
std::optional<std::uint32_t> LeaderOf(GameObject& object);
void SetLeader(GameObject& object, std::uint32_t id);
