#include "tools/bots/bot_seats.h"

#include "core/pause.h"
#include "match/episode/new_game.h"

BotSeats::BotSeats(const BotKinds& kinds, BotKind mouse, std::uint32_t seed) : kinds_(kinds) {
  const auto add = [&](int player, BotKind kind, bool byMouse) {
    if (kind != BotKind::kNone) seats_.push_back(std::make_unique<Seat>(player, kind, byMouse, seed));
  };
  for (int player = 0; player < kPlayers; ++player) add(player, kinds_[static_cast<std::size_t>(player)], false);
  add(0, mouse, true);
}

void BotSeats::Connect(ScriptedPlatform& platform) const {
  for (int player = 0; player < kPlayers; ++player)
    if (kinds_[static_cast<std::size_t>(player)] != BotKind::kNone) platform.ConnectPad(player, true);
}

void BotSeats::Play(int frame, ScriptedPlatform& platform) {
  if (seats_.empty()) return;
  if (!IsMatchRunning() || IsPaused()) {
    for (const auto& seat : seats_) {
      seat->hands.Rest(platform);
      seat->plan = {};
    }
    return;
  }
  if (frame % kLookEvery == 0) Think(frame);
  for (const auto& seat : seats_) seat->hands.Move(frame, seat->plan, platform);
}

// The sight that is replaced next time is the one that is old enough now.
void BotSeats::Think(int frame) {
  const auto look = static_cast<std::size_t>(frame / kLookEvery);
  Look(frame, sights_[look % kSights]);
  const Sight& seen = sights_[(look + 1) % kSights];
  if (seen.frame != frame - kReaction) return;
  for (const auto& seat : seats_) {
    const BotHands& hands = seat->hands;
    seat->plan =
        seat->bot->Think(seen, {seat->player, frame, hands.GetCharge(), hands.GetLaunchFrame(), hands.GetLaunch()});
  }
}
