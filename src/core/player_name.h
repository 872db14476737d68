// Players are told by their objects' names: 'P' first, a digit from 1 to 5 last.
#pragma once

#include <string_view>

/// A player index that says nobody: not set, in the rules that remember who holds something.
inline constexpr int kNobody = -1337;
/// Likewise where rules ask anew in every frame, and for a name that is no player's.
inline constexpr int kNotAPlayer = -1;

/// Whether the name is a player's; false for the empty one.
constexpr bool IsPlayerName(std::string_view name) {
  return name.size() > 1 && name.front() == 'P' && name.back() >= '1' && name.back() <= '5';
}

/// The player's index, 0 to 4, of a name for which IsPlayerName holds; kNotAPlayer for any other.
constexpr int PlayerIndexFromName(std::string_view name) {
  return IsPlayerName(name) ? name.back() - '1' : kNotAPlayer;
}
