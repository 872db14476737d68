// What a player and its gauge say to each other, with the payload of each event. Receivers check for a null payload.
#pragma once

#include "core/event.h"

namespace ForceEvents {

// player to gauge
inline constexpr char kSetCharge[] = "SetChargeEvent";      ///< none: charge rules from now on
inline constexpr char kRequest[] = "RequestForceEvent";     ///< int: player index; asks for the budget
inline constexpr char kUsed[] = "UsedForceEvent";           ///< PlayerAmount: a launch was paid
inline constexpr char kReset[] = "ResetForceEvent";         ///< none: refill the budget
inline constexpr char kStartCharge[] = "StartChargeEvent";  ///< none: the trigger went down
inline constexpr char kLaunch[] = "LaunchEvent";            ///< none: the trigger was let go
// gauge to player
inline constexpr char kReturn[] = "ReturnForceEvent";           ///< PlayerAmount: the budget
inline constexpr char kFire[] = "FireEvent";                    ///< float: launch with this strength
inline constexpr char kCurrent[] = "CurrForceEvent";            ///< float: the charge or budget now
inline constexpr char kFinishedReset[] = "FinishedResetEvent";  ///< none: the refill is done

struct PlayerAmount {
  int player;
  float amount;
};

/// The payload of an event as a T, or null when it carries none.
template <class T>
const T* Payload(const Event& event) {
  return static_cast<const T*>(event.data);
}

}  // namespace ForceEvents
