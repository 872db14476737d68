// Where pictures and sound of a run go.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "tools/film/image.h"

inline constexpr int kSheetGap = 4;  ///< pixels between the pictures of a contact sheet

class Output {
 public:
  virtual ~Output() = default;
  /// Before the run; what went wrong, or empty.
  virtual std::string Open() = 0;
  /// The next picture. `name` names it where it becomes a file of its own. Encoding goes on beside the caller.
  virtual void AddPicture(const std::string& name, WindowPixels pixels) = 0;
  /// The sound up to the next picture: 48000 frames a second, two samples each.
  virtual void AddSound(std::span<const std::int16_t> /*stereo*/) {}
  /// What went wrong so far, or empty.
  virtual std::string GetError() = 0;
  /// Completes the output; what went wrong, or empty. An output that goes without it leaves nothing half done behind.
  virtual std::string Finish() = 0;
};

/// Why no file can be made in that folder, or empty.
std::string WhyNotWritable(const std::string& folder);

/// Each picture as NAME.png in a folder, which is made when it is not there.
std::unique_ptr<Output> MakePictureFolder(const std::string& folder);

/// All pictures side by side, row by row, in one PNG file. Sizes are those of a picture.
std::unique_ptr<Output> MakeContactSheet(const std::string& file, int rows, int columns, int width, int height);
