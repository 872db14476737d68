#include "graphics/texture_upload.h"

#include <SOIL/SOIL.h>

#include "graphics/picture.h"

Texture LoadTextureFile(const std::string& name) {
  const PictureUse use = gl::HasContext() ? PictureUse::kPixels : PictureUse::kCheck;
  Picture picture;
  if (!ReadPicture("Texture", name, use, picture)) return {};
  if (!gl::HasContext()) return {.name = 1};
  const Texture texture = {gl::GenTexture(), picture.opaque};
  gl::BindTexture(texture.name);
  // Into the bound texture, so that what gl remembers stands. It makes a picture smaller that the driver cannot take.
  SOIL_create_OGL_texture(picture.pixels.get(), picture.width, picture.height, SOIL_LOAD_RGBA, texture.name, 0);
  gl::SetSmoothClamped();
  gl::BindTexture(0);
  return texture;
}
