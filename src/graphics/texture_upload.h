// Picture files on their way to GL.
#pragma once

#include <string>

#include "graphics/gl.h"

struct Texture {
  GLuint name = 0;      ///< 0: not loaded
  bool opaque = false;  ///< no pixel lets anything through
};

/// Loads a picture from Texture/ into a new GL texture; name 0 when ReadPicture cannot read it. Without a GL
/// context one that can be read gives name 1.
Texture LoadTextureFile(const std::string& name);
