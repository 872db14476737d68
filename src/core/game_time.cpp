#include "core/game_time.h"

GameTime& Time() {
  static GameTime time;
  return time;
}
