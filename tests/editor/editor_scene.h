// The running program with an empty stage, on which a test uses keys, the mouse and the editor's bars.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/selection.h"
#include "editor/editor.h"
#include "scripted_scene.h"

class EditorTest : public ::testing::Test, protected ScriptedScene {
 protected:
  EditorTest() { editor.Init(); }
  ~EditorTest() override { editor.Init(); }

  using ScriptedScene::Run;  // testing::Test has one too
  void OnEvent(std::string_view /*text*/) override {}
  void Press(const char* label) { EXPECT_EQ(editor.Press(label), ""); }
  void Set(const char* label, const char* value) { EXPECT_EQ(editor.Set(label, value), ""); }
  void SaveAs(const char* file) {
    Set("FileName", file);
    Press("Save Level");
  }
  void Load(const char* file) {
    Set("FileName", file);
    Press("Load Level");
  }
  void ExpectStatus(const char* line) { EXPECT_EQ(editor.GetStatus(), std::vector<std::string>{line}); }
  GameObject& Select(GameObject& object) {
    AddToSelection(object.id);
    return object;
  }
  GameObject& Last() { return *Objects().GetObjects().back(); }
  static GameObject* Find(std::string_view name) { return Objects().FindObjectByName(name); }
  Script& AddWithScript(const char* name, const char* script) {
    return *world.Add(name).Insert(std::make_unique<ScriptBox>()).AddScript(script);
  }
  /// A controller with one segment, a level of one object "fish"; selected, as its level stands too.
  GameObject& AddMatchOfOnePiece() {
    AddWithScript("fish", "DeathTimer");
    Objects().SaveLevel("piece");
    AddWithScript("segmentmanager", "SegmentManager");
    GameObject& controller = Select(Last());
    Press("Add Segment");
    Set("levelName1", "piece");
    return controller;
  }
  std::string Saved(const char* name) {
    Objects().SaveLevel(name);
    return WithoutIds(world.ReadFile(name));
  }

  static SDL_Event EventOf(Uint32 type) {
    SDL_Event event{};
    event.type = type;
    return event;
  }
  void Send(const SDL_Event& event, int frames = 1) {
    platform.Push(event);
    Run(frames);
  }
  void Tap(int key) {
    SetKey(key, true);
    SetKey(key, false);
    Run();
  }
  /// What the system sends again and again while a key is held.
  void Repeat(int key) {
    SDL_Event event = EventOf(SDL_KEYDOWN);
    event.key.keysym.sym = key;
    event.key.repeat = 1;
    Send(event);
  }
  void Type(char letter) {
    SDL_Event event = EventOf(SDL_TEXTINPUT);
    event.text.text[0] = letter;
    Send(event);
  }
  void Mouse(int x, int y) {
    place = {x, y};
    SDL_Event event = EventOf(SDL_MOUSEMOTION);
    std::tie(event.motion.x, event.motion.y) = place;
    Send(event, 3);
  }
  void Button(bool down) {
    SDL_Event event = EventOf(down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP);
    event.button.button = SDL_BUTTON_LEFT;
    std::tie(event.button.x, event.button.y) = place;
    Send(event);
  }
  void Click(int x, int y) {
    Mouse(x, y);
    Button(true);
    Button(false);
  }

  Editor& editor = GetEditor();
  std::pair<int, int> place;
};
