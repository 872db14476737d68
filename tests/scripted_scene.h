// A scene of which a test presses the keys and pads, frame by frame; what the run's log says comes to OnEvent.
#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/scripted_platform.h"
#include "frame.h"
#include "game_events.h"
#include "graphics/sprite.h"
#include "match/players.h"
#include "physics/contact.h"
#include "test_world.h"

/// What the first of two bodies is told when they touch; the other one is told the same with the sides swapped.
inline GalePhysics::Contact ContactOf(GameObject& first, GameObject& second) {
  GalePhysics::Contact contact;
  contact.first = &BodyOf(first);
  contact.second = &BodyOf(second);
  contact.firstOwner = &first;
  contact.secondOwner = &second;
  return contact;
}
/// Tells `struck` of somebody who runs into it, at a speed in units per second.
inline void Hit(GameObject& struck, GameObject& other, float speed = 0.0f) {
  BodyOf(other).velocity = {speed, 0.0f, 0.0f};
  struck.OnContact(ContactOf(struck, other));
}

class ScriptedScene : public RunLogListener {
 public:
  ScriptedScene() {
    SetPlatform(platform);
    SetRunLogListener(this);
    SetDemoMode(false);
  }
  ScriptedScene(const ScriptedScene&) = delete;
  ScriptedScene& operator=(const ScriptedScene&) = delete;
  ~ScriptedScene() override {
    for (int slot = 0; slot < kGamepadSlots; ++slot) platform.ConnectPad(slot, false);
    platform.PumpEvents(events_);  // the pads' last state is read and forgotten
    SetRunLogListener(nullptr);
    static ScriptedPlatform nothing;
    SetPlatform(nothing);
  }

  void Run(int frames = 1) {
    for (int i = 0; i < frames; ++i, ++frame) runner_.Run();
  }
  void SetKey(int key, bool down) {
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = key;
    platform.Push(event);
  }
  void ConnectAllPads() {
    for (int slot = 0; slot < kGamepadSlots; ++slot) platform.ConnectPad(slot, true);
  }

  /// Sprites of objects that live.
  static std::vector<const Sprite*> FindPictures(std::string_view picture) {
    std::vector<const Sprite*> found;
    for (const auto& object : Objects().GetObjects())
      if (const Sprite* sprite = object->Get<Sprite>(); object->alive && sprite != nullptr)
        if (sprite->texturePath == picture) found.push_back(sprite);
    return found;
  }

  TestWorld world;
  ScriptedPlatform platform;
  int frame = 0;

 private:
  GameEvents events_;
  Frame runner_{events_};
};
