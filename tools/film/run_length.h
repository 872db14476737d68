// How many frames a run will have, which nobody knows before it has been run.
#pragma once

#include "tools/simulate/run.h"

/// Runs it in a process of its own, which takes a fraction of what drawing takes; 0 when that fails, as the run itself
/// then will. In the data folder, before any thread, window or sound is there.
int MeasureRunLength(const RunOptions& options, const InputScript& input);
