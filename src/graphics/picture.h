// PNG pictures, decoded by libpng. Levels travel with their pictures, so a file may be damaged or made to do harm: its
// numbers are checked before anything is allocated for them. Needs no GL context; whoever asks gets the same answer.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

/// Larger pictures are refused. The area bounds what a small file can make the game allocate: 64 MB of pixels.
inline constexpr std::uint32_t kMaxPictureSide = 8192;
inline constexpr std::uint32_t kMaxPictureArea = 4096 * 4096;

enum class PictureUse {
  kPixels,
  kCheck,  ///< decodes all the same, but keeps no pixels
};

struct Picture {
  int width = 0;  ///< pixels
  int height = 0;
  bool opaque = false;                      ///< no pixel lets anything through
  std::unique_ptr<unsigned char[]> pixels;  ///< RGBA, a byte each, lowest row first as GL takes it; null when checked
};

/// Reads any kind of PNG: palettes, greys, 16 bits, interlaced ones. False when it cannot be read to its end or is too
/// large; `picture` is then of no use. Colour profiles and gamma change nothing, nor do wrong checksums.
bool DecodePicture(std::span<const unsigned char> file, PictureUse use, Picture& picture);

/// The same for a file of that name in a folder; false also when there is none, the name leads out of the folder, or
/// the file has more than 64 MB.
bool ReadPicture(const std::string& folder, const std::string& name, PictureUse use, Picture& picture);
