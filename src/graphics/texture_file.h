// Picture files: checked before anything is decoded, then handed to GL first row at the top of the quad.
#pragma once

#include <string>

#include "graphics/gl.h"

/// Loads a PNG from Texture/ into a new GL texture; 0 when it is missing, no PNG, or larger than 8192 on a side, or
/// when the name leads out of the folder. Without a GL context a readable PNG gives 1 and nothing is decoded.
GLuint LoadTextureFile(const std::string& name);
