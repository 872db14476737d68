// The program from its first frame, without pictures: keys and pads that a test presses, and what the run's log says.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "build_world.h"
#include "core/transform.h"
#include "folders.h"
#include "graphics/sprite.h"
#include "input/gamepad.h"
#include "match/episode/new_game.h"
#include "screens/start_up.h"
#include "scripted_scene.h"

class ScreenScene : public ScriptedScene {
 public:
  ScreenScene() {
    for (const char* name : {"menubackground", "howtoplaylevel", "creditslevel", "finish", "fader", "winscreen"})
      std::filesystem::copy_file(std::filesystem::path(GameFolder()) / name, name);
    BindKeys();
  }

  /// Each is pressed for two frames; both give the log since the last call, as TakeLog.
  std::string Press(std::initializer_list<int> keys) {
    for (const int key : keys) {
      SetKey(key, true);
      Run(2);
      SetKey(key, false);
      Run(2);
    }
    return TakeLog();
  }
  std::string PressPad(int slot, std::initializer_list<int> buttons) {
    for (const int button : buttons) {
      platform.SetPadButton(slot, button, true);
      Run(2);
      platform.SetPadButton(slot, button, false);
      Run(2);
    }
    return TakeLog();
  }
  /// Held with the repeats of a keyboard.
  std::string Hold(int key, int frames) {
    for (int i = 0; i < frames; ++i) {
      SetKey(key, true);
      Run();
    }
    SetKey(key, false);
    Run();
    return TakeLog();
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
    for (const char* kind : {"screen ", "menu ", "pause ", "music ", "sound 26"})  // a jingle announces the podium
      if (text.starts_with(kind)) log += (log.empty() ? "" : "; ") + std::string(text);
    if (text.starts_with("sound ")) sounds.emplace_back(text);
  }
  std::string TakeLog() { return std::exchange(log, ""); }
  static GameObject* Find(std::string_view name) { return Objects().FindObjectByName(name); }
  static std::vector<const GameObject*> FindAll(std::string_view name) {
    std::vector<const GameObject*> found;
    for (const auto& object : Objects().GetObjects())
      if (object->alive && object->name == name) found.push_back(object.get());
    return found;
  }

  std::string log;  // separated by "; "
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
