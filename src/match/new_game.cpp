#include "match/new_game.h"

#include <array>

#include "core/object_manager.h"
#include "graphics/background.h"
#include "match/create_player.h"
#include "match/hud.h"
#include "match/players.h"

namespace {

bool matchRunning = false;

const std::array<PlayerDefinition, kPlayers>& PlayerDefinitions() {
  static const std::array<PlayerDefinition, kPlayers> definitions = {{
      {0, "Player1", "P1Force", "rp.png", {-2.0f, 2.0f, 0.0f}, "ScoreText"},
      {1, "Player2", "P2Force", "wp.png", {2.0f, 2.0f, 0.0f}, "ScoreText2"},
      {2, "Player3", "P3Force", "bp.png", {-2.0f, -2.0f, 0.0f}, "ScoreText3"},
      {3, "Player4", "P4Force", "gp.png", {2.0f, -2.0f, 0.0f}, "ScoreText4"},
  }};
  return definitions;
}

void StartGame() {
  Objects().KillAll();
  SetupMatch();
  Objects().LoadLevel("level1");
  SetBackgroundPicture("background.png");
}

}  // namespace

void SetupMatch() {
  ClearHudObjects();
  for (const char* archetype : {"core", "bubblegens", "floor"}) Objects().LoadLevel(archetype);
  for (const GameObject* object : Objects().LoadLevel("scorebacks")) AddHudObject(object->id);
  for (const PlayerDefinition& player : PlayerDefinitions()) CreatePlayer(player);
}

void NewGame() {
  Objects().KillAll();
  StartGame();
  matchRunning = true;
}

bool IsMatchRunning() { return matchRunning; }

void ToggleDemoMode() {
  SetDemoMode(!IsDemoMode());
  if (IsDemoMode()) NewGame();
}
