#include "match/episode/new_game.h"

#include <array>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/run_log.h"
#include "core/scene_state.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "graphics/background.h"
#include "match/episode/game_timer.h"
#include "match/player/create_player.h"
#include "match/players.h"
#include "match/score/hud.h"
#include "match/score/score_displays.h"
#include "scripts/archetype.h"
#include "scripts/hazards/broad_side.h"

namespace {

constexpr Vec3 kClockPlace = {0.0f, 10.0f, 0.0f};

bool& MatchRunning() {
  static SceneState<bool> running;
  return *running;
}

void (*newGameListener)() = nullptr;
bool (*newGameGuard)() = nullptr;

const std::array<PlayerDefinition, kPlayers>& PlayerDefinitions() {
  static const std::array<PlayerDefinition, kPlayers> definitions = {{
      {0, "Player1", "P1Force", "rp.png", {-2.0f, 2.0f, 0.0f}, "ScoreText"},
      {1, "Player2", "P2Force", "wp.png", {2.0f, 2.0f, 0.0f}, "ScoreText2"},
      {2, "Player3", "P3Force", "bp.png", {-2.0f, -2.0f, 0.0f}, "ScoreText3"},
      {3, "Player4", "P4Force", "gp.png", {2.0f, -2.0f, 0.0f}, "ScoreText4"},
  }};
  return definitions;
}

void CreateMatchClock() {
  GameObject& clock = *Objects().GetObject(Objects().CreateObject());
  clock.core = true;
  clock.GetTransform().position = kClockPlace;
  clock.Insert(std::make_unique<ScriptBox>()).AddScript(std::make_unique<GameTimer>());
}

std::vector<std::uint32_t> StartGame(const std::string& level) {
  if (newGameListener != nullptr) newGameListener();
  Objects().KillAll();
  SetupMatch();
  std::vector<std::uint32_t> ids;
  for (const GameObject* object : Objects().LoadLevel(level)) ids.push_back(object->id);
  SetBackgroundPicture("background.png");
  return ids;
}

}  // namespace

void SetupMatch() {
  ClearHudObjects();
  BroadSide::ResetSide();
  for (const char* archetype : {"core", "bubblegens", "floor"}) CreateAllFromArchetype(archetype);
  for (const GameObject* object : CreateAllFromArchetype("scorebacks")) AddHudObject(object->id);
  CreateScoreDisplays();
  // The players start the match's music, which stops no other by itself.
  Audio::StopMusicExcept(Sound::kMatchMusic);
  for (const PlayerDefinition& player : PlayerDefinitions()) CreatePlayer(player);
  CreateMatchClock();
}

std::vector<std::uint32_t> NewGame(const std::string& level) {
  LogEvent("screen game");
  std::vector<std::uint32_t> ids = StartGame(level);
  MatchRunning() = true;
  return ids;
}

void SetNewGameGuard(bool (*mayStart)()) { newGameGuard = mayStart; }

void AskForNewGame() {
  if (newGameGuard == nullptr || newGameGuard()) NewGame();
}

bool IsMatchRunning() { return MatchRunning(); }
void SetNewGameListener(void (*listener)()) { newGameListener = listener; }
void EndMatch() { MatchRunning() = false; }

void ToggleDemoMode() {
  if (!IsDemoMode() && newGameGuard != nullptr && !newGameGuard()) return;
  SetDemoMode(!IsDemoMode());
  if (IsDemoMode()) NewGame();
}
