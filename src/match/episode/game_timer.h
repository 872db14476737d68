// The match clock: a pie of nine wedges around its owner, one of which goes grey in every ninth of the match. It waits
// for an episode, speeds the music up near the end, and at the end makes the win screen and ends the match controller.
#pragma once

#include <array>
#include <cstdint>

#include "core/script.h"

struct Colour255;

class GameTimer final : public Script {
 public:
  /// The fast music may start again.
  GameTimer();

  void Update(float step) override;
  const char* GetName() const override { return "class GameTimer"; }

  /// Seconds of game time left; 0 before an episode is there.
  float GetRemainingTime() const { return remainingTime_; }

 private:
  static constexpr int kChunks = 9;

  void Build();
  void ShowWinScreen();
  void Blink(float step);
  void FinishChunk();
  void SpeedUpMusic();
  void ColourChunk(int chunk, const Colour255& colour) const;

  std::array<std::uint32_t, kChunks> chunkIds_{};
  float chunkTimer_ = 0.0f;     // game seconds in the running chunk
  float remainingTime_ = 0.0f;  // game seconds
  float blinkTimer_ = 0.0f;     // game seconds since the last blink
  float chunkDuration_ = 0.0f;  // game seconds
  int chunksLeft_ = kChunks;    // index of the running chunk; below 0: the match is over
  bool built_ = false;
};
