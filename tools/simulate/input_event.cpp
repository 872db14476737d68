#include "tools/simulate/input_event.h"

#include <array>
#include <string_view>
#include <utility>

#include "editor/editor.h"
#include "input/input.h"
#include "tools/simulate/input_words.h"

namespace {

constexpr std::array<std::pair<std::string_view, std::uint8_t>, 3> kButtons = {
    {{"left", SDL_BUTTON_LEFT}, {"right", SDL_BUTTON_RIGHT}, {"middle", SDL_BUTTON_MIDDLE}}};

// Those that the editor alone knows.
constexpr std::array<std::pair<std::string_view, int>, 10> kEditorKeys = {{{"f1", SDLK_F1},
                                                                           {"f2", SDLK_F2},
                                                                           {"f3", SDLK_F3},
                                                                           {"f4", SDLK_F4},
                                                                           {"f5", SDLK_F5},
                                                                           {"f6", SDLK_F6},
                                                                           {"f7", SDLK_F7},
                                                                           {"f8", SDLK_F8},
                                                                           {"f9", SDLK_F9},
                                                                           {"delete", SDLK_DELETE}}};

int KeyCode(std::string_view name) {
  for (const auto& [known, code] : kEditorKeys)
    if (name == known) return code;
  return Input::KeyCodeFromName(name);
}

std::string_view KeyName(int code) {
  for (const auto& [name, known] : kEditorKeys)
    if (code == known) return name;
  return Input::NameOfKey(code);
}

InputEvent ParseKey(InputWords& words) {
  const std::string name = words.Word("the key");
  const bool down = words.Choice("the state", "down", "up");
  const int code = KeyCode(name);
  if (code == SDLK_UNKNOWN) words.Fail("no key is called \"" + name + "\"");
  return Given::Key{code, down};
}

InputEvent ParsePad(InputWords& words) {
  if (words.Skip("others")) return Given::OtherDevices{words.Number("how many devices", 0, 1000)};
  const int slot = words.Number("the pad's slot", 0, kGamepadSlots - 1);
  const std::string what = words.Word("what the pad does");
  if (what == "connect" || what == "disconnect") return Given::PadPresence{slot, what == "connect"};
  if (what == "axis") {
    const int axis = words.Number("the axis", 0, kGamepadAxes - 1);
    return Given::PadAxis{slot, axis, static_cast<std::int16_t>(words.Number("the value", -32768, 32767))};
  }
  if (what == "button") {
    const int button = words.Number("the button", 0, kGamepadButtons - 1);
    return Given::PadButton{slot, button, words.Choice("the state", "down", "up")};
  }
  words.Fail("a pad can connect, disconnect, axis or button, not \"" + what + "\"");
  return {};
}

InputEvent ParseMouse(InputWords& words) {
  const int x = words.Number("x", -32768, 32767);
  return Given::Mouse{x, words.Number("y", -32768, 32767)};
}

InputEvent ParseClick(InputWords& words) {
  const std::string name = words.Word("the button");
  const bool down = words.Choice("the state", "down", "up");
  for (const auto& [known, code] : kButtons)
    if (name == known) return Given::Click{code, down};
  words.Fail("the mouse has left, right and middle, not \"" + name + "\"");
  return {};
}

InputEvent ParseWindow(InputWords& words) {
  const int width = words.Number("the width", 1, kLargestWindow);
  return Given::Window{width, words.Number("the height", 1, kLargestWindow)};
}

// "LABEL" presses a button, "LABEL = VALUE" sets a variable; between quotes, the label is a path, and "held" may
// follow.
InputEvent ParseBar(InputWords& words) {
  if (words.IsQuoted()) {
    Given::Bar bar{words.Quoted("the path"), true};
    if (!words.Skip("=")) return bar;
    bar.value = words.Quoted("the value");
    bar.held = words.Skip("held");
    return bar;
  }
  const std::string rest = words.Rest("the label");
  const auto equals = rest.find(" =");
  Given::Bar bar{rest.substr(0, equals)};
  if (equals != std::string::npos) bar.value = equals + 3 < rest.size() ? rest.substr(equals + 3) : std::string{};
  return bar;
}

InputEvent ParseEvent(InputWords& words) {
  const std::string kind = words.Word("the kind of event");
  if (kind == "key") return ParseKey(words);
  if (kind == "pad") return ParsePad(words);
  if (kind == "mouse") return ParseMouse(words);
  if (kind == "click") return ParseClick(words);
  if (kind == "focus") return Given::Focus{words.Choice("the focus", "gained", "lost")};
  if (kind == "window") return ParseWindow(words);
  if (kind == "bar") return ParseBar(words);
  if (kind == "clipboard") return Given::Clipboard{words.Quoted("the text")};
  if (kind == "reached" || kind == "end") return Given::Mark{kind == "end"};
  words.Fail("an event is key, pad, mouse, click, focus, window, bar, clipboard, reached or end, not \"" + kind + "\"");
  return {};
}

std::string State(bool down) { return down ? " down" : " up"; }

struct Formatter {
  std::string operator()(const Given::Key& key) const {
    return "key " + std::string(KeyName(key.code)) + State(key.down);
  }
  std::string operator()(const Given::PadPresence& pad) const {
    return Pad(pad.slot) + (pad.connected ? "connect" : "disconnect");
  }
  std::string operator()(const Given::PadAxis& pad) const {
    return Pad(pad.slot) + "axis " + std::to_string(pad.axis) + " " + std::to_string(pad.value);
  }
  std::string operator()(const Given::PadButton& pad) const {
    return Pad(pad.slot) + "button " + std::to_string(pad.button) + State(pad.down);
  }
  std::string operator()(const Given::OtherDevices& others) const {
    return "pad others " + std::to_string(others.count);
  }
  std::string operator()(const Given::Mouse& mouse) const {
    return "mouse " + std::to_string(mouse.x) + " " + std::to_string(mouse.y);
  }
  std::string operator()(const Given::Click& click) const {
    for (const auto& [name, code] : kButtons)
      if (code == click.button) return "click " + std::string(name) + State(click.down);
    return {};
  }
  std::string operator()(const Given::Focus& focus) const { return focus.gained ? "focus gained" : "focus lost"; }
  std::string operator()(const Given::Window& window) const {
    return "window " + std::to_string(window.width) + " " + std::to_string(window.height);
  }
  std::string operator()(const Given::Bar& bar) const {
    std::string line = "bar " + (bar.isPath ? InputWords::Quote(bar.label) : bar.label);
    if (bar.value) line += " = " + (bar.isPath ? InputWords::Quote(*bar.value) : *bar.value);
    return bar.held ? line + " held" : line;
  }
  std::string operator()(const Given::Clipboard& clipboard) const {
    return "clipboard " + InputWords::Quote(clipboard.text);
  }
  std::string operator()(const Given::Mark& mark) const { return mark.end ? "end" : "reached"; }

  static std::string Pad(int slot) { return "pad " + std::to_string(slot) + " "; }
};

// Only the bars can lack what is asked for.
struct Doer {
  ScriptedPlatform& platform;

  std::string operator()(const Given::Key& key) const {
    return Well([&] { platform.PushKey(key.code, key.down); });
  }
  std::string operator()(const Given::PadPresence& pad) const {
    return Well([&] { platform.ConnectPad(pad.slot, pad.connected); });
  }
  std::string operator()(const Given::PadAxis& pad) const {
    return Well([&] { platform.SetPadAxis(pad.slot, pad.axis, pad.value); });
  }
  std::string operator()(const Given::PadButton& pad) const {
    return Well([&] { platform.SetPadButton(pad.slot, pad.button, pad.down); });
  }
  std::string operator()(const Given::OtherDevices& others) const {
    return Well([&] { platform.SetOtherDevices(others.count); });
  }
  std::string operator()(const Given::Mouse& mouse) const {
    return Well([&] { platform.PushMouse(mouse.x, mouse.y); });
  }
  std::string operator()(const Given::Click& click) const {
    return Well([&] { platform.PushClick(click.button, click.down); });
  }
  std::string operator()(const Given::Focus& focus) const {
    return Well([&] { platform.PushFocus(focus.gained); });
  }
  std::string operator()(const Given::Window& window) const {
    return Well([&] { platform.ResizeWindow(window.width, window.height); });
  }
  std::string operator()(const Given::Bar& bar) const {
    Editor& editor = GetEditor();
    if (!bar.value) return bar.isPath ? editor.PressAt(bar.label) : editor.Press(bar.label);
    return bar.isPath ? editor.SetAt(bar.label, *bar.value, !bar.held) : editor.Set(bar.label, *bar.value);
  }
  std::string operator()(const Given::Clipboard& clipboard) const {
    return Well([&] { platform.SetClipboard(clipboard.text); });
  }
  std::string operator()(const Given::Mark&) const { return {}; }

  template <class Action>
  static std::string Well(const Action& action) {
    action();
    return {};
  }
};

}  // namespace

bool HasKeyName(int code) { return !KeyName(code).empty(); }

bool ParseInputLine(const std::string& line, int& frame, InputEvent& event, std::string& error) {
  InputWords words(line);
  if (words.IsEmpty()) return false;
  frame = words.Number("the frame", 0, kMostInputFrames);
  event = ParseEvent(words);
  words.End();
  error = words.GetError();
  return words.IsGood();
}

std::string FormatInputLine(int frame, const InputEvent& event) {
  return std::to_string(frame) + " " + std::visit(Formatter{}, event);
}

std::string Apply(const InputEvent& event, ScriptedPlatform& platform) { return std::visit(Doer{platform}, event); }
