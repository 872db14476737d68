#include "core/game_time.h"

#include "core/scene_state.h"

GameTime& Time() {
  static SceneState<GameTime> time;
  return *time;
}
