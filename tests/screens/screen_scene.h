// The program from its first frame, without pictures: keys and pads that a test presses, and what the run's log says.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/transform.h"
#include "graphics/sprite.h"
#include "input/gamepad.h"
#include "screens/start_up.h"
#include "scripted_scene.h"
#include "startup.h"

class ScreenScene : public ScriptedScene {
 public:
  ScreenScene() {
    for (const char* name : {"menubackground", "howtoplaylevel", "creditslevel"})
      std::filesystem::copy_file(std::filesystem::path(BRINEWHIRL_GAME_DIR) / name, name);
    BindKeys();
  }

  /// One press, held for two frames.
  void Press(int key) {
    SetKey(key, true);
    Run(2);
    SetKey(key, false);
    Run(2);
  }
  void PressPad(int slot, int button) {
    platform.SetPadButton(slot, button, true);
    Run(2);
    platform.SetPadButton(slot, button, false);
    Run(2);
  }
  void Click(Uint8 button) {
    SDL_Event event{};
    event.type = SDL_MOUSEBUTTONDOWN;
    event.button.button = button;
    platform.Push(event);
    Run();
    event.type = SDL_MOUSEBUTTONUP;
    platform.Push(event);
    Run();
  }

  void OnEvent(std::string_view text) override {
    if (text.starts_with("screen ") || text.starts_with("menu ") || text.starts_with("pause ") ||
        text.starts_with("music "))
      log.emplace_back(frame, text);
    if (text.starts_with("sound ")) sounds.emplace_back(text);
  }
  /// The words of the log so far, which is emptied.
  std::string TakeLog() {
    std::string words;
    for (const auto& [when, text] : std::exchange(log, {})) words += (words.empty() ? "" : "; ") + text;
    return words;
  }
  /// The frame of the first entry, or -1.
  int FrameOf(std::string_view event) const {
    for (const auto& [when, text] : log)
      if (text == event) return when;
    return -1;
  }
  static GameObject* Find(std::string_view name) { return Objects().FindObjectByName(name); }

  std::vector<std::pair<int, std::string>> log;
  std::vector<std::string> sounds;
};
