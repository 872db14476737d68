#include "graphics/texture_upload.h"

#include <SOIL/SOIL.h>
#include <SOIL/image_helper.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "graphics/picture.h"

namespace {

constexpr int kChannels = 4;

// Makes it smaller by a whole number, the same each way, until neither side is longer than `most` pixels.
void Shrink(Picture& picture, int most) {
  const int block = (std::max(picture.width, picture.height) + most - 1) / most;
  const int width = std::max(1, picture.width / block);
  const int height = std::max(1, picture.height / block);
  const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * kChannels;
  auto pixels = std::make_unique_for_overwrite<unsigned char[]>(bytes);
  mipmap_image(picture.pixels.get(), picture.width, picture.height, kChannels, pixels.get(), block, block);
  picture.width = width;
  picture.height = height;
  picture.pixels = std::move(pixels);
}

// Into the bound texture, so that what gl remembers stands. SOIL makes a picture smaller that the driver cannot take;
// on OpenGL ES it would also stretch whatever is no power of two each way, since it looks for a desktop extension.
void Upload(Picture& picture, GLuint texture) {
  if (!gl::IsEs()) {
    SOIL_create_OGL_texture(picture.pixels.get(), picture.width, picture.height, SOIL_LOAD_RGBA, texture, 0);
    return;
  }
  const int most = gl::MaxTextureSize();
  if (std::max(picture.width, picture.height) > most) Shrink(picture, most);
  gl::TexImage(GL_RGBA, picture.width, picture.height, GL_RGBA, picture.pixels.get());
}

}  // namespace

Texture LoadTextureFile(const std::string& name) {
  const PictureUse use = gl::HasContext() ? PictureUse::kPixels : PictureUse::kCheck;
  Picture picture;
  if (!ReadPicture("Texture", name, use, picture)) return {};
  if (!gl::HasContext()) return {.name = 1};
  // SOIL makes what the driver cannot take smaller by itself; what comes of that is too large for a sheet all the same.
  const Texture texture = {
      .name = gl::GenTexture(), .opaque = picture.opaque, .width = picture.width, .height = picture.height};
  gl::BindTexture(texture.name);
  Upload(picture, texture.name);
  gl::SetSmoothClamped();
  gl::BindTexture(0);
  return texture;
}
