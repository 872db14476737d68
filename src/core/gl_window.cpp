#include "core/gl_window.h"

namespace {

constexpr int kEsMajor = 3;

void AskForEs() {
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, kEsMajor);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 0);
}

// The scene's target has a depth of its own; the window's would cost one per cent of a frame for nothing.
void AskForNoDepth() {
  SDL_GL_ResetAttributes();
  SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 0);
}

// Mesa hands what it is told to a thread of its own, which pays where a frame is thousands of calls. Ours are a few
// hundred draws, and a frame takes more than twice the processor time to submit with that thread. Other drivers do not
// read this.
void KeepMesaInOneThread() {
  constexpr int kKeepTheUsersOwn = 0;
  SDL_setenv("GALLIUM_THREAD", "0", kKeepTheUsersOwn);
}

}  // namespace

// The window is made anew for each kind of context: its pixel format, and the library behind it, may be another's.
bool GlWindow::Open(const char* title, const SDL_Rect& rect, Uint32 flags, GlLoader load) {
  const auto attempt = [&] {
    Close();
    window_ = SDL_CreateWindow(title, rect.x, rect.y, rect.w, rect.h, flags | SDL_WINDOW_OPENGL);
    if (window_ != nullptr) context_ = SDL_GL_CreateContext(window_);
    error_ = context_ == nullptr ? SDL_GetError() : "";
    report_ = context_ == nullptr ? GlReport{} : load();
    return report_.canDraw;
  };
  KeepMesaInOneThread();
  AskForNoDepth();
  if (attempt()) return true;
  AskForEs();
  const bool es = attempt();
  AskForNoDepth();
  return es || attempt() || HasContext();
}

void GlWindow::Close() {
  if (context_ != nullptr) SDL_GL_DeleteContext(context_);
  if (window_ != nullptr) SDL_DestroyWindow(window_);
  context_ = nullptr;
  window_ = nullptr;
}
