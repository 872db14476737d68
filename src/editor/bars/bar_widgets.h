// The widgets of the bars: ImGui windows with groups, variables and buttons.
#pragma once

#include "editor/bars/bar_actions.h"
#include "editor/bars/bar_window.h"

/// Colours and distances of all bars; once, when the context is there.
void StyleBars();

/// Shows a window; `place` is where it was put before, and is now. What is done in it is added to `actions`.
void ShowWindow(const BarWindow& window, const BarLook& look, BarPlace& place, BarActions& actions);
