// The end of a match, from the last whistle to the podium: the stage fades out and is cleared, the four players are
// laid out in the order of their points, and the podium fades in and waits for a button that opens the end menu.
#pragma once

#include <cstdint>

#include "core/script.h"

class WinScreenLogic final : public Script {
 public:
  /// Starts the sequence and shows the "finish" archetype.
  void Initialize() override;
  void Update(float step) override;
  void AddToTweakBar(FieldBar& bar) override;
  const char* GetName() const override { return "wsl"; }

 private:
  // What the screen waits for the end of, in order.
  enum class Stage { kFinish, kFadeOut, kClear, kFadeIn, kWait };

  void Advance();
  /// Adds to the fader's opacity, 0 to 1.
  void Fade(float change) const;
  void ClearStage() const;
  /// Looks for the buttons that open the menu.
  void Leave();

  Stage stage_ = Stage::kFinish;
  float nextTime_ = 0.0f;  // game time of the next stage
  std::uint32_t faderId_ = 0;
  bool exitArmed_ = false;      // a first press has been seen
  bool exitRequested_ = false;  // the menu was opened from here
};
