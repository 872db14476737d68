// Runs the game without window, sound device or sleeping, as the game itself runs.
#pragma once

#include <string>

#include "tools/simulate/run.h"

struct SimulateOptions : RunOptions {
  std::string traceFile;  ///< empty: none; "-": standard output
  std::string saveName;   ///< empty: none; a plain name in the data folder
  std::string wavFile;    ///< the run's sound; empty: none
  bool check = false;     ///< stop where something does not hold that must
};

/// Files are meant relative to the working folder of the call. Returns the exit code: 0, 1 for what cannot be read or
/// written or does not hold, 2 for a wrong input file.
int Simulate(SimulateOptions options);
