// Where bars stand: one window each, or several bars one below another in the same.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "editor/bars/tweak_bar.h"

struct BarWindow {
  enum class Site { kLeft, kRight, kTop, kBottom, kMiddle, kCard };

  std::string title;
  std::vector<const TweakBar*> bars;
  Site site = Site::kLeft;
  bool flowing = false;  ///< buttons stand beside each other as far as they fit
};

/// How all of them are shown.
struct BarLook {
  bool narrow = false;
  bool folded = false;
};

/// Where a window was put, in window pixels; one that somebody moved from there stays where it was moved to.
struct BarPlace {
  float x = -1.0f;  ///< of the upper left corner; below 0: nowhere yet
  float y = -1.0f;
  float width = 0.0f;
  float height = 0.0f;  ///< at most
  bool folded = false;
  bool moved = false;
};

/// A line over the picture, in window pixels.
struct StageLine {
  enum class Ink { kPicked, kMark, kGrid, kTie, kHandle };

  std::vector<std::array<float, 2>> points;
  Ink ink = Ink::kPicked;
  bool closed = true;
  bool filled = false;    ///< a closed one's inside too
  bool above = false;     ///< over the bars, not under them
  std::string text = {};  ///< beside its first point
};
