// Shows a run of the game without a window: the same pictures, as files, as a film or as one sheet.
#pragma once

#include <string>

#include "tools/simulate/run.h"

struct FilmOptions : RunOptions {
  std::string out;      ///< absolute: a folder, or a file whose name's end tells what it is; empty with `times`
  int from = 0;         ///< first frame
  int to = -1;          ///< last frame; below 0: that of the run
  int every = 0;        ///< one frame in so many; 0: as many as `rate` asks for
  int rate = 0;         ///< pictures a second of a film; 0: as many as `every` gives
  bool coarse = false;  ///< draw at the pictures' size, many times faster; small things flicker
  int width = 0;        ///< of a picture, pixels; 0: what suits the output
  int height = 0;
  int rows = 0;  ///< above 0: a contact sheet
  int columns = 0;
  bool moments = false;  ///< what is worth a picture, instead of frames by number
  bool times = false;    ///< draw and measure only
};

inline constexpr int kLongestSide = 8192;  ///< pixels, of a picture and of a sheet

/// Returns the exit code: 0, 1 for what cannot be read, drawn or written, 2 for wrong options or a wrong input file.
int Film(FilmOptions options);
