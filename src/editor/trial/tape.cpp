#include "editor/trial/tape.h"

#include <algorithm>

namespace {

// What the game goes by; the rest, as the window's size, is another one's when the frame is run again.
bool Counts(const SDL_Event& event) {
  switch (event.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP:
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
    case SDL_CONTROLLERDEVICEADDED:
    case SDL_CONTROLLERDEVICEREMOVED:
    case SDL_JOYDEVICEADDED:
    case SDL_JOYDEVICEREMOVED:
      return true;
    case SDL_WINDOWEVENT:
      return event.window.event == SDL_WINDOWEVENT_FOCUS_GAINED || event.window.event == SDL_WINDOWEVENT_FOCUS_LOST;
    default:
      return false;
  }
}

PadsRead ReadPads() {
  PadsRead read;
  read.joysticks = GetPlatform().GetJoystickCount();
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    const Gamepad& gamepad = Input::GetGamepad(slot);
    PadsRead::Pad& pad = read.pads[static_cast<std::size_t>(slot)];
    pad.connected = gamepad.IsConnected();
    for (int button = 0; button < kGamepadButtons; ++button)
      pad.buttons[static_cast<std::size_t>(button)] = gamepad.IsButtonDown(button);
    pad.axes = gamepad.axes;
  }
  return read;
}

}  // namespace

InputState TakeInputState() {
  InputState state{Input::GetHeld(), Input::GetPointer(), {}};
  for (int slot = 0; slot < kGamepadSlots; ++slot) state.pads[static_cast<std::size_t>(slot)] = Input::GetGamepad(slot);
  return state;
}

void PutInputState(const InputState& state) {
  Input::GetHeld() = state.held;
  Input::GetPointer() = state.pointer;
  for (int slot = 0; slot < kGamepadSlots; ++slot) Input::GetGamepad(slot) = state.pads[static_cast<std::size_t>(slot)];
}

void Tape::Clear() { *this = {}; }

void Tape::Hear(const SDL_Event& event) {
  if (Counts(event)) under_.events.push_back(event);
}

bool Tape::Record(bool frozen, bool onBars) {
  if (frames_.size() >= kMost) return false;
  under_.frozen = frozen;
  under_.onBars = onBars;
  under_.window = GetPlatform().GetWindowRect();
  const PadsRead read = ReadPads();
  const bool same = !frames_.empty() && *frames_.back().pads == read;
  under_.pads = same ? frames_.back().pads : std::make_shared<const PadsRead>(read);
  run_.push_back((run_.empty() ? 0 : run_.back()) + (frozen ? 0 : 1));
  frames_.push_back(std::move(under_));
  under_ = {};
  return true;
}

void Tape::Cut(std::size_t frame) {
  frames_.resize(std::min(frame, frames_.size()));
  run_.resize(frames_.size());
}

int Tape::CountRun(std::size_t frames) const { return frames == 0 ? 0 : run_[std::min(frames, run_.size()) - 1]; }

std::size_t Tape::FindRun(int run) const {
  if (run <= 0) return 0;
  return static_cast<std::size_t>(std::lower_bound(run_.begin(), run_.end(), run) - run_.begin()) + 1;
}
