// Films, which ffmpeg encodes: a program of its own that must be installed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "tools/film/output.h"

struct FilmFormat {
  int width = 0;  ///< pixels
  int height = 0;
  int rate = 30;  ///< pictures in `rateBase` seconds
  int rateBase = 1;
  bool sound = false;
};

/// Whether the name ends like a file's.
bool HasFileEnding(std::string_view file);
bool IsPngName(std::string_view file);
/// Whether a file of this name can be a film: .webm, .mp4 or .gif.
bool IsFilmName(std::string_view file);
/// A GIF: without sound, and held in memory until it is whole.
bool IsGifName(std::string_view file);

std::unique_ptr<Output> MakeFilmFile(const std::string& file, const FilmFormat& format);
