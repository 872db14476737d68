// Runs the game without window, sound device or sleeping, as the game itself runs.
#pragma once

#include <string>

#include "tools/simulate/run.h"

struct SimulateOptions : RunOptions {
  std::string traceFile;  ///< empty: none; "-": standard output
  std::string saveName;   ///< empty: none; a plain name in the data folder
  std::string sceneFile;  ///< absolute; where the last frame's scene is left as a level; empty: nowhere
  std::string wavFile;    ///< the run's sound; empty: none
  bool places = false;    ///< print where players were
  bool check = false;     ///< look after every frame whether all is well, and end the run when it is not
};

/// Files are meant relative to the working folder of the call. Returns the exit code: 0, 1 for what cannot be read or
/// written and for a check that fails, 2 for a wrong input file.
int Simulate(SimulateOptions options);
