// A page of what keys and mouse do while the bars are shown.
#pragma once

#include <algorithm>
#include <utility>

#include "editor/bars/tweak_bar.h"

class KeyCard {
 public:
  /// Frames within which a second press of the key that shows the bars asks for the card.
  static constexpr int kTwice = 20;

  /// A press of that key: whether it was the second of two.
  bool PressTwice() { return std::exchange(waited_, 0) < kTwice; }
  /// Once a frame.
  void Update() { waited_ = std::min(waited_ + 1, kTwice); }

  const TweakBar& GetBar();
  bool IsShown() const { return shown_; }
  void Show() { shown_ = true; }
  void Toggle() { shown_ = !shown_; }
  void Reset() { *this = {}; }

 private:
  TweakBar bar_{"keys"};
  bool shown_ = false;
  int waited_ = kTwice;
};
