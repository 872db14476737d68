#include "tools/record/live_platform.h"

#include <algorithm>
#include <utility>

#include "editor/editor.h"

class LivePlatform::Ear final : public EventRouter {
 public:
  explicit Ear(LivePlatform& platform) : platform_(platform) {}
  void BeginFrame() override {}
  void Route(const SDL_Event& event) override { platform_.Hear(event); }
  void EndFrame() override {}

 private:
  LivePlatform& platform_;
};

LivePlatform::LivePlatform(Platform& window, ScriptedPlatform& given, Recorder& recorder)
    : WindowPlatform(window, given), recorder_(recorder) {
  GetEditor().SetHand(this);
  const WindowRect rect = window.GetWindowRect();
  events_.push_back(Given::Window{rect.width, rect.height});
}

LivePlatform::~LivePlatform() { GetEditor().SetHand(nullptr); }

// What was done on the bars comes first, as an input file has it: its lines do it before the frame's events are routed.
void LivePlatform::PumpEvents(EventRouter& router) {
  recorder_.BeginFrame(frame_);
  for (const InputEvent& event : std::exchange(bars_, {})) Give(event);
  Ear ear(*this);
  window_.PumpEvents(ear);
  running = running && window_.running;
  ReadPads();
  for (const InputEvent& event : events_) Give(event);
  events_.clear();
  ++frame_;
  given_.PumpEvents(router);
}

// What cannot be done is not written down: the entry may have gone since it was seen.
void LivePlatform::Give(const InputEvent& event) {
  if (Apply(event, given_).empty()) recorder_.Write(frame_, event);
}

void LivePlatform::Press(const std::string& path) {
  if (path == "stage/Paste") ReadClipboard(bars_);
  bars_.push_back(Given::Bar{path, true});
}

// Only when it is about to be pasted in the editor: what else people copy is no business of a recording.
void LivePlatform::ReadClipboard(std::vector<InputEvent>& into) {
  if (!GetEditor().IsShown()) return;
  std::string text = window_.GetClipboard();
  if (text != given_.GetClipboard()) into.push_back(Given::Clipboard{std::move(text)});
}

void LivePlatform::SetClipboard(const std::string& text) {
  window_.SetClipboard(text);
  given_.SetClipboard(text);
}

void LivePlatform::Set(const std::string& path, const std::string& value, bool done) {
  bars_.push_back(Given::Bar{path, true, value, !done});
}

void LivePlatform::Hear(const SDL_Event& event) {
  if (GetEditor().HandleBarEvent(event)) return;
  switch (event.type) {
    case SDL_QUIT:
      running = false;
      break;
    case SDL_WINDOWEVENT:
      HearWindow(event.window);
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      if (const int code = event.key.keysym.sym; HasKeyName(code)) {
        if (code == SDLK_v && event.type == SDL_KEYDOWN) ReadClipboard(events_);
        events_.push_back(Given::Key{code, event.type == SDL_KEYDOWN});
      }
      break;
    case SDL_MOUSEMOTION:
      MoveMouse(event.motion.x, event.motion.y);
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      if (event.button.button > SDL_BUTTON_RIGHT) break;
      MoveMouse(event.button.x, event.button.y);
      events_.push_back(Given::Click{event.button.button, event.type == SDL_MOUSEBUTTONDOWN});
      break;
    case SDL_CONTROLLERDEVICEADDED:
    case SDL_CONTROLLERDEVICEREMOVED:
    case SDL_JOYDEVICEADDED:
    case SDL_JOYDEVICEREMOVED:
      for (int slot = 0; slot < kGamepadSlots; ++slot) window_.OpenGamepad(slot);
      break;
    default:
      break;
  }
}

void LivePlatform::HearWindow(const SDL_WindowEvent& event) {
  if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED && event.data1 > 0 && event.data2 > 0)
    events_.push_back(Given::Window{std::min(event.data1, kLargestWindow), std::min(event.data2, kLargestWindow)});
  if (event.event == SDL_WINDOWEVENT_FOCUS_GAINED) events_.push_back(Given::Focus{true});
  if (event.event == SDL_WINDOWEVENT_FOCUS_LOST) events_.push_back(Given::Focus{false});
}

// A mouse reports many places a frame, of which the last counts.
void LivePlatform::MoveMouse(int x, int y) {
  const Given::Mouse place = {std::clamp(x, -32768, 32767), std::clamp(y, -32768, 32767)};
  if (place.x == mouse_.x && place.y == mouse_.y) return;
  mouse_ = place;
  if (!events_.empty() && std::holds_alternative<Given::Mouse>(events_.back()))
    events_.back() = place;
  else
    events_.push_back(place);
}

void LivePlatform::ReadPads() {
  int pads = 0;
  for (int slot = 0; slot < kGamepadSlots; ++slot) {
    ReadPad(slot);
    if (window_.IsGamepadConnected(slot)) ++pads;
  }
  const int others = std::max(0, window_.GetJoystickCount() - pads);
  if (others != std::exchange(otherDevices_, others)) events_.push_back(Given::OtherDevices{others});
}

// Only what differs from what the script was told.
void LivePlatform::ReadPad(int slot) {
  const bool connected = window_.IsGamepadConnected(slot);
  bool fresh = false;
  if (connected != given_.IsGamepadConnected(slot)) {
    events_.push_back(Given::PadPresence{slot, connected});
    fresh = connected;
  }
  if (!connected) return;
  for (int axis = 0; axis < kGamepadAxes; ++axis) {
    const std::int16_t value = window_.GetGamepadAxis(slot, axis);
    const std::int16_t told = fresh ? ScriptedPlatform::AxisAtRest(axis) : given_.GetGamepadAxis(slot, axis);
    if (value != told) events_.push_back(Given::PadAxis{slot, axis, value});
  }
  for (int button = 0; button < kGamepadButtons; ++button) {
    const bool down = window_.GetGamepadButton(slot, button);
    if (down != (!fresh && given_.GetGamepadButton(slot, button)))
      events_.push_back(Given::PadButton{slot, button, down});
  }
}
