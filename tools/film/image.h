// Images in memory and as PNG files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// 8-bit RGB, rows from top to bottom without padding.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> rgb;

  Image() = default;
  /// Black.
  Image(int wide, int high)
      : width(wide), height(high), rgb(3 * static_cast<std::size_t>(wide) * static_cast<std::size_t>(high)) {}
  std::uint8_t* Row(int y) { return rgb.data() + 3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(y); }
  const std::uint8_t* Row(int y) const { return const_cast<Image*>(this)->Row(y); }
};

/// What was read back from a window: 8-bit RGBA, rows from bottom to top, `scale` times as large as the image.
struct WindowPixels {
  int width = 0;  ///< of the image
  int height = 0;
  int scale = 1;
  std::vector<std::uint8_t> rgba;
};

/// The image, each of whose pixels is the mean of `scale` x `scale` of the window's.
Image Reduce(const WindowPixels& window);

/// The image as the content of a PNG file; empty when the library fails.
std::string EncodePng(const Image& image);

/// Puts a PNG file in the place of an old one in one step; what went wrong, or empty.
std::string WritePng(const std::string& fileName, const Image& image);
