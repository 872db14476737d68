// Picture files on their way to GL.
#pragma once

#include <array>
#include <string>

#include "graphics/gl.h"

struct Texture {
  GLuint name = 0;      ///< 0: not loaded
  bool opaque = false;  ///< no pixel lets anything through
  int width = 0;        ///< pixels, as it was uploaded
  int height = 0;
  bool onSheet = false;          ///< a copy lies on the renderer's sheet of small pictures
  std::array<float, 4> place{};  ///< there: scale in the first two, offset in the others, in texture space
};

/// Loads a picture from Texture/ into a new GL texture; name 0 when ReadPicture cannot read it. Without a GL
/// context one that can be read gives name 1.
Texture LoadTextureFile(const std::string& name);
