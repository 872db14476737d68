#include "editor/freeze.h"

#include "core/pause.h"

void Freeze::Set(Pace pace) {
  if (pace == pace_) return;
  pace_ = pace;
  stepDue_ = false;
  waited_ = 0;
}

void Freeze::Step() {
  Set(Pace::kFrozen);
  stepDue_ = true;
}

void Freeze::Update() {
  switch (pace_) {
    case Pace::kRunning:
      Hold(false);
      break;
    case Pace::kFrozen:
      Hold(!stepDue_);
      stepDue_ = false;
      break;
    case Pace::kSlow:
      waited_ = (waited_ + 1) % kSlowPeriod;
      Hold(waited_ != 0);
      break;
  }
}

void Freeze::Release() {
  Set(Pace::kRunning);
  Hold(false);
}

void Freeze::Hold(bool held) {
  if (held == held_) return;
  held_ = held;
  held ? RequestPause(kFrozenReason) : ReleasePause(kFrozenReason);
}
