// One run of a stage, in a process of its own: what happens is told in notes through a pipe, and a stage that crashes
// or hangs takes nobody with it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/lint/play/play_notes.h"
#include "tools/simulate/play_stage.h"

struct PlayPlan {
  /// Whether seats are flown by players who only try to get away, from places all over the stage; else by bots of all
  /// kinds, which take the seats in turn.
  bool probing;
  int number;  ///< of the runs of its kind, from 0
};

/// What a run has told, and whether it came to its end.
struct PlayResult {
  std::vector<PlayNote> notes;
  bool whole = false;
};

/// Plays all runs, as many at a time as there are processors. When one was given up because what it showed makes it
/// slow, no further one is begun, and the results are fewer than the plans. The present folder is the stage's (see
/// PlayStage::Enter).
std::vector<PlayResult> PlayAll(const PlayStage& stage, const std::vector<PlayPlan>& plans);
