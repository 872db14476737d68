#include "tools/film/offscreen_gl.h"

#include "editor/editor.h"
#include "graphics/gl.h"
#include "graphics/renderer.h"

OffscreenGl::~OffscreenGl() {
  GetEditor().Shutdown();
  GetRenderer().Shutdown();
  gl::Unload();
  window_.Close();
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

std::string OffscreenGl::Open(int width, int height) {
  // Whatever the environment asks for, which is meant for games.
  SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "offscreen", SDL_HINT_OVERRIDE);
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return SDL_GetError();
  if (!window_.Open("", {0, 0, width, height}, 0, gl::Load)) return window_.GetError();
  // The loader's own result is no sign: without an X display it complains and has loaded everything.
  if (gl::HasContext()) return {};
  const char* error = window_.GetReport().error;
  return error == nullptr ? "the driver lacks what the game draws with" : error;
}
