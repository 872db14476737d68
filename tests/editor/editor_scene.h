// The running program with an empty stage, on which a test uses keys, the mouse and the editor's bars.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "core/object_manager.h"
#include "core/scripted_platform.h"
#include "core/selection.h"
#include "editor/editor.h"
#include "frame.h"
#include "game_events.h"
#include "test_world.h"

class EditorTest : public ::testing::Test {
 protected:
  EditorTest() {
    SetPlatform(platform);
    GetEditor().Init();
  }
  ~EditorTest() override {
    GetEditor().Init();
    static ScriptedPlatform nothing;
    SetPlatform(nothing);
  }

  void Frames(int count = 1) {
    for (int i = 0; i < count; ++i) frame.Run();
  }
  void Press(const char* label) { EXPECT_EQ(editor.Press(label), ""); }
  void Set(const char* label, const char* value) { EXPECT_EQ(editor.Set(label, value), ""); }
  GameObject& Select(GameObject& object) {
    AddToSelection(object.id);
    return object;
  }
  GameObject& Last() { return *Objects().GetObjects().back(); }
  std::string Saved(const char* name) {
    Objects().SaveLevel(name);
    return WithoutIds(world.ReadFile(name));
  }

  void Key(int code, bool down, bool repeat = false) {
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = code;
    event.key.repeat = repeat ? 1 : 0;
    platform.Push(event);
  }
  void Tap(int code) {
    Key(code, true);
    Key(code, false);
    Frames();
  }
  void Mouse(int x, int y) {
    SDL_Event event{};
    event.type = SDL_MOUSEMOTION;
    event.motion.x = x;
    event.motion.y = y;
    platform.Push(event);
    place = {x, y};
    Frames(3);
  }
  void Button(bool down) {
    SDL_Event event{};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.x = place[0];
    event.button.y = place[1];
    platform.Push(event);
    Frames();
  }
  void Click(int x, int y) {
    Mouse(x, y);
    Button(true);
    Button(false);
  }

  TestWorld world;
  ScriptedPlatform platform;
  GameEvents events;
  Frame frame{events};
  Editor& editor = GetEditor();
  std::array<int, 2> place{};
};
