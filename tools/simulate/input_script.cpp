#include "tools/simulate/input_script.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>

#include "editor/editor.h"
#include "input/input.h"

namespace {

using Words = std::vector<std::string>;

// Reads the words of one line in turn; the first failure sticks.
class WordReader {
 public:
  explicit WordReader(const std::string& line) {
    std::istringstream text(line.substr(0, line.find('#')));
    for (std::string word; text >> word;) words_.push_back(word);
  }

  bool IsEmpty() const { return words_.empty(); }
  bool IsGood() const { return error_.empty(); }
  const std::string& GetError() const { return error_; }

  std::string Word(const char* what) {
    if (next_ < words_.size()) return words_[next_++];
    Fail(std::string(what) + " is missing");
    return {};
  }

  int Number(const char* what, int low, int high) {
    const std::string word = Word(what);
    int value = low;
    const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
    const bool whole = result.ec == std::errc{} && result.ptr == word.data() + word.size();
    if (!whole || value < low || value > high)
      Fail(std::string(what) + " must be a whole number from " + std::to_string(low) + " to " + std::to_string(high));
    return std::clamp(value, low, high);
  }

  // One of two words; true for the first.
  bool Choice(const char* what, std::string_view yes, std::string_view no) {
    const std::string word = Word(what);
    if (word != yes && word != no) Fail(std::string(what) + " must be " + std::string(yes) + " or " + std::string(no));
    return word == yes;
  }

  void End() {
    if (next_ < words_.size()) Fail("\"" + words_[next_] + "\" is too much");
  }

  // All words that are left, with one blank between.
  std::string Rest(const char* what) {
    std::string rest;
    for (; next_ < words_.size(); ++next_) rest += (rest.empty() ? "" : " ") + words_[next_];
    if (rest.empty()) Fail(std::string(what) + " is missing");
    return rest;
  }

  void Fail(const std::string& error) {
    if (error_.empty()) error_ = error;
  }

 private:
  Words words_;
  std::size_t next_ = 0;
  std::string error_;
};

constexpr int kMaxFrame = 1000000000;

struct MousePlace {
  int x = 0;
  int y = 0;
};

SDL_Event KeyEvent(int keyCode, bool down) {
  SDL_Event event{};
  event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
  event.key.keysym.sym = keyCode;
  return event;
}

std::function<void(ScriptedPlatform&)> ParseKey(WordReader& words) {
  const std::string name = words.Word("the key");
  const bool down = words.Choice("the state", "down", "up");
  const int code = name == "f1" ? static_cast<int>(SDLK_F1) : Input::KeyCodeFromName(name);
  if (code == SDLK_UNKNOWN) words.Fail("no key is called \"" + name + "\"");
  return [code, down](ScriptedPlatform& platform) { platform.Push(KeyEvent(code, down)); };
}

std::function<void(ScriptedPlatform&)> ParsePad(WordReader& words) {
  const int slot = words.Number("the pad's slot", 0, kGamepadSlots - 1);
  const std::string what = words.Word("what the pad does");
  if (what == "connect" || what == "disconnect") {
    const bool connected = what == "connect";
    return [=](ScriptedPlatform& platform) { platform.ConnectPad(slot, connected); };
  }
  if (what == "axis") {
    const int axis = words.Number("the axis", 0, kGamepadAxes - 1);
    const auto value = static_cast<std::int16_t>(words.Number("the value", -32768, 32767));
    return [=](ScriptedPlatform& platform) { platform.SetPadAxis(slot, axis, value); };
  }
  if (what == "button") {
    const int button = words.Number("the button", 0, kGamepadButtons - 1);
    const bool down = words.Choice("the state", "down", "up");
    return [=](ScriptedPlatform& platform) { platform.SetPadButton(slot, button, down); };
  }
  words.Fail("a pad can connect, disconnect, axis or button, not \"" + what + "\"");
  return {};
}

std::function<void(ScriptedPlatform&)> ParseMouse(WordReader& words, const std::shared_ptr<MousePlace>& mouse) {
  MousePlace next;
  next.x = words.Number("x", -32768, 32767);
  next.y = words.Number("y", -32768, 32767);
  return [mouse, next](ScriptedPlatform& platform) {
    *mouse = next;
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = next.x;
    event.motion.y = next.y;
    platform.Push(event);
  };
}

std::function<void(ScriptedPlatform&)> ParseClick(WordReader& words, const std::shared_ptr<MousePlace>& mouse) {
  const std::string button = words.Word("the button");
  const bool down = words.Choice("the state", "down", "up");
  std::uint8_t code = SDL_BUTTON_LEFT;
  if (button == "right")
    code = SDL_BUTTON_RIGHT;
  else if (button == "middle")
    code = SDL_BUTTON_MIDDLE;
  else if (button != "left")
    words.Fail("the mouse has left, right and middle, not \"" + button + "\"");
  return [=](ScriptedPlatform& platform) {
    SDL_Event event{};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = code;
    event.button.x = mouse->x;
    event.button.y = mouse->y;
    platform.Push(event);
  };
}

// "LABEL" presses a button, "LABEL = VALUE" sets a variable.
std::function<std::string(ScriptedPlatform&)> ParseBar(WordReader& words) {
  const std::string rest = words.Rest("the label");
  const auto equals = rest.find(" =");
  if (equals == std::string::npos) return [rest](ScriptedPlatform&) { return GetEditor().Press(rest); };
  const std::string label = rest.substr(0, equals);
  const std::string value = equals + 3 < rest.size() ? rest.substr(equals + 3) : std::string{};
  return [label, value](ScriptedPlatform&) { return GetEditor().Set(label, value); };
}

std::string LineError(int number, const std::string& error) { return "line " + std::to_string(number) + ": " + error; }

// Events that the platform takes cannot fail.
std::function<std::string(ScriptedPlatform&)> AlwaysWell(std::function<void(ScriptedPlatform&)> action) {
  return [action = std::move(action)](ScriptedPlatform& platform) {
    action(platform);
    return std::string{};
  };
}

}  // namespace

bool InputScript::Parse(const std::string& text, std::string& error) {
  // Where the mouse is when an event is applied, whatever the order of the lines.
  const auto mouse = std::make_shared<MousePlace>();
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    WordReader words(line);
    if (words.IsEmpty()) continue;
    const int frame = words.Number("the frame", 0, kMaxFrame);
    const std::string kind = words.Word("the kind of event");
    Action action;
    if (kind == "key")
      action = AlwaysWell(ParseKey(words));
    else if (kind == "pad")
      action = AlwaysWell(ParsePad(words));
    else if (kind == "mouse")
      action = AlwaysWell(ParseMouse(words, mouse));
    else if (kind == "click")
      action = AlwaysWell(ParseClick(words, mouse));
    else if (kind == "bar")
      action = ParseBar(words);
    else
      words.Fail("an event is key, pad, mouse, click or bar, not \"" + kind + "\"");
    words.End();
    if (!words.IsGood()) {
      error = LineError(number, words.GetError());
      return false;
    }
    lines_.push_back({frame, number, std::move(action)});
  }
  std::stable_sort(lines_.begin(), lines_.end(), [](const Line& a, const Line& b) { return a.frame < b.frame; });
  return true;
}

bool InputScript::Apply(int frame, ScriptedPlatform& platform, std::string& error) {
  for (; next_ < lines_.size() && lines_[next_].frame <= frame; ++next_) {
    const std::string fault = lines_[next_].action(platform);
    if (fault.empty()) continue;
    error = LineError(lines_[next_].number, fault);
    return false;
  }
  return true;
}
