// The widgets of a bar: one ImGui window with its groups, variables and buttons.
#pragma once

#include "editor/bar_view.h"

/// Colours and distances of all bars; once, when the context is there.
void StyleBars();

/// Shows a bar with its upper left corner at (x, y), at most that large; what is done on it is added to `actions`.
void ShowBar(const TweakBar& bar, float x, float y, float width, float height, BarActions& actions);
