#include "editor/stage/grid.h"

#include <cmath>

#include "input/input.h"

namespace {

bool IsCtrlHeld() { return Input::IsKeyDown("ctrl") || Input::IsKeyDown("rctrl"); }

float Rounded(float value, float step) { return step > 0.0f ? std::round(value / step) * step : value; }

}  // namespace

float Grid::Snapped(float value) const {
  const float byKey = step > 0.0f ? 0.0f : kFine;
  return Rounded(value, IsCtrlHeld() ? byKey : step);
}

float Grid::SnappedTurn(float angle) { return IsCtrlHeld() ? angle : Rounded(angle, kTurnStep); }
