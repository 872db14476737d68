// The players of a match on the shipped stage, without its rules, frame by frame, with pads and keys that a test
// presses.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/scripted_platform.h"
#include "core/transform.h"
#include "frame.h"
#include "game_events.h"
#include "match/new_game.h"
#include "match/players.h"
#include "physics/rigid_body.h"
#include "test_world.h"

class MatchScene : public RunLogListener {
 public:
  /// Without its rules nothing slows the match down, and it does not end.
  enum class Rules { kOff, kOn };

  explicit MatchScene(Rules rules = Rules::kOff) {
    std::filesystem::current_path(BRINEWHIRL_BUILD_DIR);
    SetPlatform(platform);
    SetRunLogListener(this);
    SetDemoMode(false);
    NewGame();
    if (rules == Rules::kOn) return;
    Find("segmentmanager").alive = false;
    log.clear();
  }
  MatchScene(const MatchScene&) = delete;
  MatchScene& operator=(const MatchScene&) = delete;
  ~MatchScene() override {
    for (int slot = 0; slot < kGamepadSlots; ++slot) platform.ConnectPad(slot, false);
    platform.PumpEvents(events_);  // the pads' last state is read and forgotten
    SetRunLogListener(nullptr);
    static ScriptedPlatform nothing;
    SetPlatform(nothing);
  }

  void Run(int frames) {
    for (int i = 0; i < frames; ++i) frame_.Run();
  }
  void ConnectAllPads() {
    for (int slot = 0; slot < kGamepadSlots; ++slot) platform.ConnectPad(slot, true);
  }
  void PressKey(int key, bool down) {
    SDL_Event event{};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.sym = key;
    platform.Push(event);
  }
  void OnEvent(std::string_view text) override {
    (text.starts_with("sound ") || text.starts_with("music ") ? sounds : log).emplace_back(text);
  }

  static GameObject& Find(std::string_view name) { return *Objects().FindObjectByName(name); }
  static Vec3& VelocityOf(std::string_view name) { return BodyOf(Find(name)).velocity; }

  TestWorld world;
  ScriptedPlatform platform;
  std::vector<std::string> log;  // without the sounds
  std::vector<std::string> sounds;

 private:
  GameEvents events_;
  Frame frame_{events_};
};
