// The widgets of a bar: one ImGui window with its groups, variables and buttons.
#pragma once

#include "editor/bars/bar_actions.h"

/// Colours and distances of all bars; once, when the context is there.
void StyleBars();

/// Where a bar stands until somebody moves it, in window pixels.
struct BarPlace {
  float x;  ///< of the upper left corner
  float y;
  float width;
  float height;  ///< at most
  bool again;    ///< go there now, moved or not
};

/// Shows a bar; what is done on it is added to `actions`.
void ShowBar(const TweakBar& bar, const BarPlace& place, BarActions& actions);
