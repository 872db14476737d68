// Runs the game without window, sound device or sleeping, as the game itself runs.
#pragma once

#include <string>

struct SimulateOptions {
  std::string dataFolder;  ///< absolute
  std::string level;       ///< one level into an empty scene; empty: one of the two below
  bool match = false;
  bool boot = false;    ///< begin with the start-up screens
  bool pilots = false;  ///< the computer flies player 1 too
  int frames = 0;
  bool untilEnd = false;  ///< instead of a number of frames: until the win screen waits for a button
  int matches = 0;        ///< above 0: that many whole matches one after the other
  std::string inputFile;  ///< empty: none
  std::string traceFile;  ///< empty: none; "-": standard output
  std::string saveName;   ///< empty: none; a plain name in the data folder
  std::string wavFile;    ///< the run's sound; empty: none
  bool digest = false;
};

/// Files are meant relative to the working folder of the call. Returns the exit code: 0, 1 for what cannot be read or
/// written, 2 for a wrong input file.
int Simulate(const SimulateOptions& options);
