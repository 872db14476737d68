// What the editor knows of a try: what was asked for, and what of the editor itself stands aside with the level.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "editor/acts/history.h"
#include "editor/freeze.h"
#include "editor/trial/trial.h"

struct TryState {
  static constexpr float kFramesASecond = 60.0f;

  enum class Ask { kNothing, kToggle, kRestart };

  Trial trial;
  TryWishes wishes;
  Ask ask = Ask::kNothing;  // done between two frames, as the jump is
  std::optional<int> jump;  // frames that shall have run
  bool scrubbed = false;    // time stands still for the slider
  bool pulled = false;      // the mouse still holds it
  Freeze::Pace paceBefore = Freeze::Pace::kRunning;
  std::uint64_t seen = 0;  // state of the try's history that has been frozen for
  std::uint64_t kept = 0;  // the same, of which `edits` hold all
  float moment = 0.0f;     // seconds of the clock since the try began

  // of the level, while it stands aside
  History history;
  Freeze freeze;
  bool shown = false;
  bool unsaved = false;
  std::vector<std::uint32_t> loadedIds;
  std::vector<ValueAct> edits;  // made in the try, which the level gets
};
