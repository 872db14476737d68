// A recording in the window, with its sound.
#pragma once

#include <string>

#include "tools/simulate/run.h"

struct WatchOptions : RunOptions {
  int from = 0;         ///< the first frame that is shown
  bool paused = false;  ///< stands at that frame
};

/// Space pauses, plus and minus double and halve the speed, the arrow keys jump ten seconds, Escape ends. Stays at the
/// last picture. An exit code.
int Watch(WatchOptions options);
