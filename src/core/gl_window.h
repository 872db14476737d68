// A window with an OpenGL context on which the game's shaders work: a plain desktop context where that knows GLSL 3.30,
// else one of OpenGL ES 3.0, which small computers have although their desktop OpenGL is older. Main thread only.
#pragma once

#include <SDL.h>

#include <string>

/// What became of the current context's entry points.
struct GlReport {
  const char* error = nullptr;  ///< a complaint of the loader's, which may be none of the context's; not owned
  bool canDraw = false;         ///< the entry points are there, and the context knows what the shaders are written in
  std::string context;          ///< which one it is, in words
};

/// Makes the GL entry points available for the context that is current.
using GlLoader = GlReport (*)();

class GlWindow {
 public:
  GlWindow() = default;
  GlWindow(const GlWindow&) = delete;
  GlWindow& operator=(const GlWindow&) = delete;

  /// Opens both and loads the entry points; `rect` and `flags` as SDL_CreateWindow takes them. Where neither kind of
  /// context will do, what the desktop one gave stays. True with a context, whose report is in GetReport.
  bool Open(const char* title, const SDL_Rect& rect, Uint32 flags, GlLoader load);
  /// Frees both; without them nothing happens.
  void Close();

  SDL_Window* Get() const { return window_; }
  bool HasContext() const { return context_ != nullptr; }
  const GlReport& GetReport() const { return report_; }
  /// What SDL said when window or context was refused.
  const std::string& GetError() const { return error_; }

 private:
  SDL_Window* window_ = nullptr;
  SDL_GLContext context_ = nullptr;
  GlReport report_;
  std::string error_;
};
