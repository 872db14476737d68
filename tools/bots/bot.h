// Who flies a seat: it sees, late, what a player sees, and says where it would launch and how strongly. Its hands
// (bot_hands.h) do the rest.
#pragma once

#include <memory>

#include "tools/bots/bot_dice.h"
#include "tools/bots/bot_kind.h"
#include "tools/bots/sight.h"

/// What a bot knows beside what it sees.
struct BotMind {
  int player;    ///< index
  int frame;     ///< now; the sight is some frames old
  float charge;  ///< of the launch that is being charged; 0: none
  /// The last launch: a bot remembers it before it sees it.
  int launchFrame = -1;
  Vec3 launch;
};

struct BotPlan {
  bool launch = false;    ///< as soon as the charge is there; false: keep what is charged
  bool charge = false;    ///< without a launch in mind
  Vec3 aim;               ///< unit vector
  float strength = 0.0f;  ///< of the launch, units per body second
  Vec3 from;              ///< where the bot believes to be
};

class Bot {
 public:
  virtual ~Bot() = default;
  virtual BotPlan Think(const Sight& sight, const BotMind& mind) = 0;
};

/// Null for kNone. `dice` must outlive the bot.
std::unique_ptr<Bot> MakeBot(BotKind kind, BotDice& dice);
