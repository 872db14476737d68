// A GL context without a display, with the renderer on it, for as long as a test needs pictures.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "core/object_manager.h"
#include "core/scripted_platform.h"
#include "core/system.h"
#include "graphics/renderer.h"

class OffscreenContext {
 public:
  static constexpr int kWidth = 320;
  static constexpr int kHeight = 180;

  OffscreenContext() {
    ::setenv("SDL_VIDEODRIVER", "offscreen", 1);
    SetPlatform(system_);
    system_.Init(gl::Load);
    // Small, because every pixel is drawn by the processor.
    SDL_SetWindowFullscreen(SDL_GL_GetCurrentWindow(), 0);
    SDL_SetWindowSize(SDL_GL_GetCurrentWindow(), kWidth, kHeight);
    GetRenderer().Init();
  }
  OffscreenContext(const OffscreenContext&) = delete;
  OffscreenContext& operator=(const OffscreenContext&) = delete;
  ~OffscreenContext() {
    Objects().Reset();  // emitters free their buffers while there is a context
    GetRenderer().Shutdown();
    gl::Unload();
    system_.Shutdown();
    static ScriptedPlatform nothing;
    SetPlatform(nothing);
  }

  bool IsUsable() const { return gl::HasContext(); }

  /// Colour of the window at a place of the picture, (0, 0) lower left to (1, 1).
  std::array<int, 3> ColourAt(float x, float y) const {
    std::array<unsigned char, 4> pixel{};
    glReadPixels(static_cast<int>(x * kWidth), static_cast<int>(y * kHeight), 1, 1, GL_RGBA, GL_UNSIGNED_BYTE,
                 pixel.data());
    return {pixel[0], pixel[1], pixel[2]};
  }

 private:
  System system_;
};
