// How good a computer player is, by name.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "match/players.h"

enum class BotKind {
  kNone,  ///< the seat stays as the game has it
  kHop,   ///< hops anywhere, like the game's own pilot
  kNear,  ///< aims at the nearest thing that pays
  kLead   ///< aims where things will be, and chooses by what they pay for the time
};

/// By player index.
using BotKinds = std::array<BotKind, kPlayers>;

std::string_view NameOf(BotKind kind);
std::optional<BotKind> BotKindFromName(std::string_view name);
/// Reads "A,B,C,D", or one name for all four; what is wrong, or empty.
std::string ParseBotKinds(std::string_view text, BotKinds& kinds);
