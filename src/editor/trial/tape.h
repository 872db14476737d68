// What a try was given, frame by frame: enough to run it again from its start without window and devices.
#pragma once

#include <SDL.h>

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include "core/platform.h"
#include "editor/acts/value_change.h"
#include "input/gamepad.h"
#include "input/input.h"

/// What input holds between two frames. Keys that went up where nobody heard of it, after a jump, are known by it.
struct InputState {
  Input::Held held;
  Input::Pointer pointer;
  std::array<Gamepad, kGamepadSlots> pads;
};
InputState TakeInputState();
void PutInputState(const InputState& state);

/// The gamepads as a frame has read them.
struct PadsRead {
  struct Pad {
    bool connected = false;
    std::array<bool, kGamepadButtons> buttons{};
    std::array<int, kGamepadAxes> axes{};

    bool operator==(const Pad&) const = default;
  };
  int joysticks = 0;
  std::array<Pad, kGamepadSlots> pads;

  bool operator==(const PadsRead&) const = default;
};

struct TapeFrame {
  std::optional<InputState> before;  ///< it does not follow from the frame before
  std::vector<SDL_Event> events;     ///< those that the editor left to the game
  std::shared_ptr<const PadsRead> pads;
  WindowRect window;
  bool onBars = false;
  bool frozen = false;               ///< the editor's freeze held it
  std::vector<ValueChange> changes;  ///< what was edited, at the end of its events
};

class Tape {
 public:
  static constexpr std::size_t kMost = 200000;  ///< frames; near an hour

  /// Begins anew, with nothing.
  void Clear();
  /// An event of the frame that is under way, and an edit in it.
  void Hear(const SDL_Event& event);
  void Hear(const ValueChange& change) { under_.changes.push_back(change); }
  /// The frame that is under way follows a jump: `before` is what input holds there.
  void BeginAt(const InputState& before) { under_.before = before; }
  /// What was heard does not count.
  void Drop() { under_ = {}; }
  bool HasChanges() const { return !under_.changes.empty(); }
  /// Ends the frame's events. False when the tape is full.
  bool Record(bool frozen, bool onBars);
  /// Forgets everything from that frame on.
  void Cut(std::size_t frame);

  std::size_t GetLength() const { return frames_.size(); }
  const TapeFrame& Get(std::size_t frame) const { return frames_[frame]; }
  /// How many of the first frames were not frozen, and the least number of frames of which that many were not.
  int CountRun(std::size_t frames) const;
  std::size_t FindRun(int run) const;

 private:
  std::vector<TapeFrame> frames_;
  std::vector<int> run_;  // up to and with each frame, those that were not frozen
  TapeFrame under_;
};
