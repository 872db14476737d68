// Whether somebody was rammed: many scripts react to fast players only.
#pragma once

#include "core/game_object.h"
#include "core/player_name.h"
#include "physics/contact.h"
#include "physics/rigid_body.h"

inline constexpr float kFastPlayerSpeed = 2.0f;  ///< world units per second

inline bool IsFastPlayer(const GalePhysics::RigidBody* body) {
  return body != nullptr && IsPlayerName(body->owner->name) && Length(body->velocity) > kFastPlayerSpeed;
}

/// Whether either body of the contact is a player's and fast.
inline bool InvolvesFastPlayer(const GalePhysics::Contact& contact) {
  return IsFastPlayer(contact.first) || IsFastPlayer(contact.second);
}
