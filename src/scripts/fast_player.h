// Whether somebody was rammed: many scripts react to fast players only. Two tests that differ when two players meet.
#pragma once

#include "core/game_object.h"
#include "core/player_name.h"
#include "physics/contact.h"
#include "physics/rigid_body.h"

inline constexpr float kFastPlayerSpeed = 2.0f;  ///< world units per body second

inline bool IsFastPlayer(const GalePhysics::RigidBody* body) {
  return body != nullptr && IsPlayerName(body->owner->name) && Length(body->velocity) > kFastPlayerSpeed;
}

/// Whether either body of the contact is a player's and fast.
inline bool InvolvesFastPlayer(const GalePhysics::Contact& contact) {
  return IsFastPlayer(contact.first) || IsFastPlayer(contact.second);
}

/// The first of the two bodies that is a player's, or null.
inline const GalePhysics::RigidBody* FirstPlayerBody(const GalePhysics::Contact& contact) {
  for (const GalePhysics::RigidBody* body : {contact.first, contact.second})
    if (body != nullptr && IsPlayerName(body->owner->name)) return body;
  return nullptr;
}

/// What scoring asks for: the first player of the contact is fast; a second one is not looked at.
inline bool IsFirstPlayerFast(const GalePhysics::Contact& contact) { return IsFastPlayer(FirstPlayerBody(contact)); }
