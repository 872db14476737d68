// Picture files: checked before anything is decoded, then handed to GL first row at the top of the quad.
#pragma once

#include <string>

#include "graphics/gl.h"

struct Texture {
  GLuint name = 0;      ///< 0: not loaded
  bool opaque = false;  ///< no pixel lets anything through
};

/// Loads a PNG from Texture/ into a new GL texture; name 0 when it is missing, no PNG, or larger than 8192 on a side,
/// or when the name leads out of the folder. Without a GL context a readable PNG gives name 1 and nothing is decoded.
Texture LoadTextureFile(const std::string& name);
