// The game's own window around a run, opened as the game opens it.
#pragma once

#include "core/system.h"

class GameWindow {
 public:
  GameWindow();
  GameWindow(const GameWindow&) = delete;
  GameWindow& operator=(const GameWindow&) = delete;
  /// Ends sound, editor and renderer, and closes the window.
  ~GameWindow();
  System& GetSystem() { return system_; }

 private:
  System system_;
};
