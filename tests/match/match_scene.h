// The players of a match on the shipped stage, without its rules.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/transform.h"
#include "folders.h"
#include "match/episode/new_game.h"
#include "physics/rigid_body.h"
#include "scripted_scene.h"

class MatchScene : public ScriptedScene {
 public:
  /// Without its rules nothing slows the match down, and it does not end.
  enum class Rules { kOff, kOn };

  explicit MatchScene(Rules rules = Rules::kOff) {
    std::filesystem::current_path(BuildFolder());
    NewGame();
    if (rules == Rules::kOn) return;
    Find("segmentmanager").alive = false;
    log.clear();
  }

  void OnEvent(std::string_view text) override {
    (text.starts_with("sound ") || text.starts_with("music ") ? sounds : log).emplace_back(text);
  }

  static GameObject& Find(std::string_view name) { return *Objects().FindObjectByName(name); }
  static Vec3& VelocityOf(std::string_view name) { return BodyOf(Find(name)).velocity; }

  std::vector<std::string> log;  // without the sounds
  std::vector<std::string> sounds;
};
