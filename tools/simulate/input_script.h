// Scripted input: one event a line, "FRAME KIND ...", put into a scripted platform before its frame is pumped. A file
// that was recorded begins with lines that say of what.
#pragma once

#include <string>
#include <vector>

#include "tools/simulate/input_event.h"

/// What the first lines of a recording say.
struct RecordingHeader {
  std::string version;     ///< of the program
  std::string dataDigest;  ///< see DigestOfData
  bool boot = false;       ///< it begins with the start-up screens, as every recording does
};

class InputScript {
 public:
  /// Parses the text of an input file; false when a line is wrong, with its number and what is wrong in `error`. What
  /// follows the last end of a line in a recording was never written whole and is left out.
  bool Parse(const std::string& text, std::string& error);
  /// Applies the events of a frame, in the order of the file's lines. Frames must be asked for in rising order. False
  /// when the editor's bars do not have what a line asks for, with the line and what is wrong in `error`; the rest is
  /// not applied.
  bool Apply(int frame, ScriptedPlatform& platform, std::string& error);

  /// The first line that does something to the pad of a slot, or to the mouse, in words; empty when there is none.
  std::string FindPad(int slot) const;
  std::string FindMouse() const;

  bool IsRecording() const { return header_.boot; }
  const RecordingHeader& GetHeader() const { return header_; }
  /// How many frames the file tells of.
  int CountFrames() const { return frames_; }
  /// Whether the recorded program came to its end.
  bool HasEnd() const { return hasEnd_; }

 private:
  struct Line {
    int frame;
    int number;  // in the file
    InputEvent event;
  };

  bool ParseLine(const std::string& line, int number, std::string& error);
  bool ParseHeader(const std::string& line, std::string& error);

  RecordingHeader header_;
  std::vector<Line> lines_;  // by frame; lines of one frame in file order
  std::size_t next_ = 0;
  int frames_ = 0;
  bool hasEnd_ = false;
};
