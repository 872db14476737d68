// Writes 16-bit WAV files.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace Studio {

class WavWriter {
 public:
  WavWriter();
  WavWriter(const WavWriter&) = delete;
  WavWriter& operator=(const WavWriter&) = delete;
  /// Completes the file.
  ~WavWriter();

  /// Creates or replaces the file; false when it cannot be written. `rate` in frames a second, `channels` 1 or 2.
  bool Open(const std::string& path, int rate, int channels);
  /// Appends whole frames; false when the disk does not take them.
  bool Write(std::span<const std::int16_t> frames);
  /// Likewise from floats with full scale 1; what is louder is clipped.
  bool Write(std::span<const float> frames);

 private:
  struct File;
  std::unique_ptr<File> file_;
};

}  // namespace Studio
