#include "graphics/texture_upload.h"

#include <algorithm>
#include <cstddef>

#include "graphics/gl.h"
#include "graphics/picture.h"

namespace {

constexpr std::size_t kChannels = 4;

// Every second pixel of every second row, for a driver that cannot take the picture; it is shown smaller than it is
// anyway.
void Halve(Picture& picture) {
  const auto width = static_cast<std::size_t>(picture.width);
  picture.width = std::max(1, picture.width / 2);
  picture.height = std::max(1, picture.height / 2);
  unsigned char* to = picture.pixels.get();
  for (std::size_t y = 0; y < static_cast<std::size_t>(picture.height); ++y)
    for (std::size_t x = 0; x < static_cast<std::size_t>(picture.width); ++x, to += kChannels)
      std::copy_n(picture.pixels.get() + (2 * y * width + 2 * x) * kChannels, kChannels, to);
}

}  // namespace

Texture LoadTextureFile(const std::string& name) {
  const PictureUse use = gl::HasContext() ? PictureUse::kPixels : PictureUse::kCheck;
  Picture picture;
  if (!ReadPicture("Texture", name, use, picture)) return {};
  if (!gl::HasContext()) return {.name = 1};
  while (std::max(picture.width, picture.height) > std::max(1, gl::MaxTextureSize())) Halve(picture);
  const Texture texture = {
      .name = gl::GenTexture(), .opaque = picture.opaque, .width = picture.width, .height = picture.height};
  gl::BindTexture(texture.name);
  gl::TexImage(GL_RGBA, picture.width, picture.height, GL_RGBA, picture.pixels.get());
  gl::SetSmoothClamped();
  gl::BindTexture(0);
  return texture;
}
