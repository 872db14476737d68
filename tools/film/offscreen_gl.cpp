#include "tools/film/offscreen_gl.h"

#include "editor/editor.h"
#include "graphics/gl.h"
#include "graphics/renderer.h"

OffscreenGl::~OffscreenGl() {
  GetEditor().Shutdown();
  GetRenderer().Shutdown();
  gl::Unload();
  if (context_ != nullptr) SDL_GL_DeleteContext(context_);
  if (window_ != nullptr) SDL_DestroyWindow(window_);
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

std::string OffscreenGl::Open(int width, int height) {
  // Whatever the environment asks for, which is meant for games.
  SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "offscreen", SDL_HINT_OVERRIDE);
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return SDL_GetError();
  window_ = SDL_CreateWindow("", 0, 0, width, height, SDL_WINDOW_OPENGL);
  if (window_ == nullptr) return SDL_GetError();
  context_ = SDL_GL_CreateContext(window_);
  if (context_ == nullptr) return SDL_GetError();
  // Its own result is no sign: without an X display it complains and has loaded everything.
  const char* error = gl::Load();
  if (gl::HasContext()) return {};
  return error == nullptr ? "the driver lacks what the game draws with" : error;
}
