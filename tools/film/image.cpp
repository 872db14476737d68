#include "tools/film/image.h"

#include <png.h>

#include "core/replace_file.h"

namespace {

// Sums a row of squares of the window's pixels into one row of the image; `lines` are the window's, top first.
void ReduceRow(const WindowPixels& window, const std::uint8_t* lines, std::uint8_t* row) {
  const auto scale = static_cast<std::size_t>(window.scale);
  const std::size_t stride = 4 * scale * static_cast<std::size_t>(window.width);
  const auto area = static_cast<unsigned>(scale * scale);
  for (std::size_t x = 0; x < static_cast<std::size_t>(window.width); ++x)
    for (std::size_t channel = 0; channel < 3; ++channel) {
      unsigned sum = area / 2;
      for (std::size_t line = 0; line < scale; ++line)
        for (std::size_t i = 0; i < scale; ++i) sum += lines[line * stride + 4 * (x * scale + i) + channel];
      row[3 * x + channel] = static_cast<std::uint8_t>(sum / area);
    }
}

}  // namespace

Image Reduce(const WindowPixels& window) {
  Image image(window.width, window.height);
  const std::size_t square = 4 * static_cast<std::size_t>(window.width) * static_cast<std::size_t>(window.scale) *
                             static_cast<std::size_t>(window.scale);
  for (int y = 0; y < window.height; ++y)
    ReduceRow(window, window.rgba.data() + square * static_cast<std::size_t>(window.height - 1 - y), image.Row(y));
  return image;
}

std::string EncodePng(const Image& image) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = PNG_FORMAT_RGB;
  // The bound instead of a first pass that only measures.
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png);
  std::string file(size, '\0');
  if (png_image_write_to_memory(&png, file.data(), &size, 0, image.rgb.data(), 0, nullptr) == 0) return {};
  file.resize(size);
  return file;
}

std::string WritePng(const std::string& fileName, const Image& image) {
  const std::string file = EncodePng(image);
  return file.empty() ? "the image cannot be encoded" : ReplaceFile(fileName, file);
}
