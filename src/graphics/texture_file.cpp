#include "graphics/texture_file.h"

#include <SOIL/SOIL.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>

#include "core/file_name.h"

namespace {

constexpr char kFolder[] = "Texture/";
constexpr std::uint32_t kMaxSide = 8192;
constexpr int kChannels = 4;
constexpr std::array<unsigned char, 8> kPngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t kWidthAt = 16;  // in the header chunk, which always comes first
constexpr std::size_t kHeightAt = 20;

using Header = std::array<unsigned char, 24>;

std::uint32_t BigEndian(const Header& header, std::size_t at) {
  return static_cast<std::uint32_t>(header[at]) << 24 | static_cast<std::uint32_t>(header[at + 1]) << 16 |
         static_cast<std::uint32_t>(header[at + 2]) << 8 | header[at + 3];
}

bool IsLoadablePng(const std::string& path) {
  Header header{};
  std::ifstream file(path, std::ios::binary);
  if (!file.read(reinterpret_cast<char*>(header.data()), header.size())) return false;
  if (!std::equal(kPngSignature.begin(), kPngSignature.end(), header.begin())) return false;
  const std::uint32_t width = BigEndian(header, kWidthAt);
  const std::uint32_t height = BigEndian(header, kHeightAt);
  return width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide;
}

bool IsOpaque(const unsigned char* pixels, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i)
    if (pixels[kChannels * i + 3] != 0xff) return false;
  return true;
}

struct FreeImage {
  void operator()(unsigned char* image) const { SOIL_free_image_data(image); }
};

}  // namespace

Texture LoadTextureFile(const std::string& name) {
  const std::string path = kFolder + name;
  if (name.empty() || !IsPlainName(name) || !IsLoadablePng(path)) return {};
  if (!gl::HasContext()) return {.name = 1};
  int width = 0;
  int height = 0;
  int channels = 0;
  const std::unique_ptr<unsigned char, FreeImage> image(
      SOIL_load_image(path.c_str(), &width, &height, &channels, SOIL_LOAD_RGBA));
  if (!image) return {};
  // GL takes the lowest row first.
  const std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(width) * kChannels;
  for (int top = 0, bottom = height - 1; top < bottom; ++top, --bottom)
    std::swap_ranges(image.get() + top * stride, image.get() + (top + 1) * stride, image.get() + bottom * stride);
  const Texture texture = {gl::GenTexture(),
                           IsOpaque(image.get(), static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
  gl::BindTexture(texture.name);
  gl::TexImage(GL_RGBA, width, height, GL_RGBA, image.get());
  gl::SetSmoothClamped();
  gl::BindTexture(0);
  return texture;
}
