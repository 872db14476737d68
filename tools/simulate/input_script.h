// Scripted input: one event a line, "FRAME KIND ...", put into a scripted platform before its frame is pumped.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/scripted_platform.h"

class InputScript {
 public:
  /// Parses the text of an input file; false when a line is wrong, with its number and what is wrong in `error`.
  bool Parse(const std::string& text, std::string& error);
  /// Applies the events of a frame, in the order of the file's lines. Frames must be asked for in rising order. False
  /// when the editor's bars do not have what a line asks for, with the line and what is wrong in `error`; the rest is
  /// not applied.
  bool Apply(int frame, ScriptedPlatform& platform, std::string& error);

 private:
  using Action = std::function<std::string(ScriptedPlatform&)>;  // what went wrong, or empty
  struct Line {
    int frame;
    int number;  // in the file
    Action action;
  };

  std::vector<Line> lines_;  // by frame; lines of one frame in file order
  std::size_t next_ = 0;
};
