// The program from its first frame, without pictures: keys and pads that a test presses, and what the run's log says.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/transform.h"
#include "graphics/sprite.h"
#include "input/gamepad.h"
#include "match/new_game.h"
#include "screens/start_up.h"
#include "scripted_scene.h"
#include "startup.h"

class ScreenScene : public ScriptedScene {
 public:
  ScreenScene() {
    for (const char* name : {"menubackground", "howtoplaylevel", "creditslevel", "finish", "fader", "winscreen"})
      std::filesystem::copy_file(std::filesystem::path(BRINEWHIRL_GAME_DIR) / name, name);
    BindKeys();
  }

  /// Each is pressed for two frames.
  void Press(std::initializer_list<int> keys) {
    for (const int key : keys)
      for (const bool down : {true, false}) {
        SetKey(key, down);
        Run(2);
      }
  }
  void PressPad(int slot, std::initializer_list<int> buttons) {
    for (const int button : buttons)
      for (const bool down : {true, false}) {
        platform.SetPadButton(slot, button, down);
        Run(2);
      }
  }
  void Hold(int key, int frames) {
    for (int i = 0; i < frames; ++i) {
      SetKey(key, true);
      Run();
    }
    SetKey(key, false);
    Run();
  }
  void Click(Uint8 button) {
    for (const auto type : {SDL_MOUSEBUTTONDOWN, SDL_MOUSEBUTTONUP}) {
      SDL_Event event{};
      event.type = type;
      event.button.button = button;
      platform.Push(event);
      Run();
    }
  }

  void OnEvent(std::string_view text) override {
    for (const char* kind : {"screen ", "menu ", "pause ", "music "})
      if (text.starts_with(kind)) log.emplace_back(frame, text);
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
  static std::vector<const GameObject*> FindAll(std::string_view name) {
    std::vector<const GameObject*> found;
    for (const auto& object : Objects().GetObjects())
      if (object->alive && object->name == name) found.push_back(object.get());
    return found;
  }

  std::vector<std::pair<int, std::string>> log;
  std::vector<std::string> sounds;
};

/// A match without a stage, with the first two pads, in which a test opens screens and menus.
class ScreenInMatchTest : public testing::Test {
 protected:
  ScreenInMatchTest() {
    for (const int slot : {0, 1}) scene.platform.ConnectPad(slot, true);
    NewGame();
    FinishStartUp();
    scene.Run(2);
    scene.TakeLog();
    scene.sounds.clear();
  }

  ScreenScene scene;
};
