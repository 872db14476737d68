// What a run is given from outside, as data: a line of an input file says one of these.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "core/scripted_platform.h"

namespace Given {

struct Key {
  int code;  ///< of SDL; one that has a name
  bool down;
};
struct PadPresence {
  int slot;
  bool connected;
};
struct PadAxis {
  int slot;
  int axis;
  std::int16_t value;
};
struct PadButton {
  int slot;
  int button;
  bool down;
};
/// Devices beyond the pads.
struct OtherDevices {
  int count;
};
struct Mouse {
  int x;
  int y;
};
struct Click {
  std::uint8_t button;  ///< of SDL
  bool down;
};
struct Focus {
  bool gained;
};
struct Window {
  int width;
  int height;
};
/// A button is pressed, or a variable set, on the editor's bars.
struct Bar {
  std::string label;
  bool isPath = false;  ///< the label is the entry's path instead, which no two share
  std::optional<std::string> value = {};
  bool held = false;  ///< the mouse still pulls at the value
};
/// Another program has put this text into the clipboard.
struct Clipboard {
  std::string text;
};
/// Nothing; a recording came as far as this frame, or to its end.
struct Mark {
  bool end;
};

}  // namespace Given

using InputEvent =
    std::variant<Given::Key, Given::PadPresence, Given::PadAxis, Given::PadButton, Given::OtherDevices, Given::Mouse,
                 Given::Click, Given::Focus, Given::Window, Given::Bar, Given::Clipboard, Given::Mark>;

inline constexpr int kMostInputFrames = 1000000000;
inline constexpr int kLargestWindow = 16384;  ///< pixels each way

/// Whether an input file has a name for the key, by SDL's key code.
bool HasKeyName(int code);

/// Reads a line, "FRAME KIND ..."; false for one of blanks and comment alone, or with what is wrong in `error`.
bool ParseInputLine(const std::string& line, int& frame, InputEvent& event, std::string& error);

/// The line that says it, without its end.
std::string FormatInputLine(int frame, const InputEvent& event);

/// Puts the event into the platform for its next pump, or does it on the bars at once. What went wrong, or empty.
std::string Apply(const InputEvent& event, ScriptedPlatform& platform);
