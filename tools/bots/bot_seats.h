// The seats of a match that bots fly, and what they all see.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/scripted_platform.h"
#include "tools/bots/bot.h"
#include "tools/bots/bot_hands.h"

class BotSeats {
 public:
  static constexpr int kReaction = 12;  ///< frames from what is seen to what is done about it
  static constexpr int kLookEvery = 4;  ///< frames between two looks

  /// `kinds` fly by pad, `mouse` is who flies the first seat by mouse.
  BotSeats(const BotKinds& kinds, BotKind mouse, std::uint32_t seed);

  /// Plugs in the pads, before the run begins.
  void Connect(ScriptedPlatform& platform) const;
  /// One frame, before the platform is pumped. Frames count from 0, without gaps.
  void Play(int frame, ScriptedPlatform& platform);

 private:
  static constexpr int kSights = kReaction / kLookEvery + 1;

  struct Seat {
    Seat(int seatPlayer, BotKind kind, bool mouse, std::uint32_t seed)
        : player(seatPlayer), dice(seed, seatPlayer), bot(MakeBot(kind, dice)), hands(seatPlayer, mouse, dice) {}
    int player;
    BotDice dice;
    std::unique_ptr<Bot> bot;
    BotHands hands;
    BotPlan plan;
  };

  void Think(int frame);

  BotKinds kinds_;
  std::vector<std::unique_ptr<Seat>> seats_;
  std::array<Sight, kSights> sights_;
};
