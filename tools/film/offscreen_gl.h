// A GL context on a window that no display shows, for as long as it lives.
#pragma once

#include <string>

#include "core/gl_window.h"

class OffscreenGl {
 public:
  OffscreenGl() = default;
  OffscreenGl(const OffscreenGl&) = delete;
  OffscreenGl& operator=(const OffscreenGl&) = delete;
  /// Frees what the editor and the renderer hold, then the context.
  ~OffscreenGl();

  /// Before the renderer starts; sizes in pixels. What went wrong, or empty.
  std::string Open(int width, int height);
  /// Which context it is, in words.
  const std::string& GetContext() const { return window_.GetReport().context; }

 private:
  GlWindow window_;
};
