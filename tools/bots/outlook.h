// What comes next, as a good player reckons it from a sight that is some frames old: where the player itself will be
// while it charges, and where everything else will be by then.
#pragma once

#include <array>

#include "tools/bots/bot.h"

class Outlook {
 public:
  static constexpr int kFrames = 64;  ///< ahead
  /// The place in every frame from now on.
  using Track = std::array<Vec3, kFrames>;

  Outlook(const Sight& sight, const BotMind& mind);

  /// The player's own place so many frames from now, if it does not launch.
  const Vec3& OwnPlace(int frames) const;
  /// The place of anything that keeps its speed, so many frames from now, of which it spends `flight` behind the
  /// slow motion.
  Vec3 PlaceOf(const Vec3& place, const Vec3& velocity, int frames, float flight) const;
  /// Where a player or the ball goes that was seen so, off walls and what stands fast.
  Track Follow(const Vec3& place, const Vec3& velocity, float radius) const;
  const Sight& GetSight() const { return sight_; }
  int GetPlayer() const { return player_; }
  float GetCharge() const { return charge_; }

  /// Whether something that stands fast is in the way.
  bool IsBlocked(const Vec3& from, const Vec3& to) const;
  /// Whether something that stuns meets a flight of this length after this many frames of charging.
  bool IsDangerous(const Vec3& from, const Vec3& to, int wait, float flight) const;

 private:
  void Drift(Vec3& place, Vec3& velocity, float radius) const;

  const Sight& sight_;
  int player_;
  float charge_;
  int age_;  // of the sight, frames
  Track own_;
};
