#include "tools/record/game_window.h"

#include "editor/editor.h"
#include "graphics/renderer.h"
#include "tools/simulate/run.h"

GameWindow::GameWindow() {
  system_.targetFps = kFramesASecond;
  system_.Init(gl::Load);
}

GameWindow::~GameWindow() {
  GameRun::Shutdown();
  GetEditor().Shutdown();
  GetRenderer().Shutdown();
  gl::Unload();
  system_.Shutdown();
}
