// Writes down what would be heard of a run, frame by frame.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "audio/audio.h"
#include "audio/studio/wav_writer.h"

class SoundRecorder {
 public:
  /// False when the file cannot be written. A run without the loopback output gives silence.
  bool Open(const std::string& path);
  /// Appends the sound of one frame, a sixtieth of a second.
  void RecordFrame();
  /// False when something could not be written.
  bool IsWhole() const { return whole_; }

 private:
  static constexpr int kChannels = 2;
  static constexpr std::size_t kFramesAFrame = Audio::kRate / 60;

  bool whole_ = true;
  Studio::WavWriter wav_;
  std::array<std::int16_t, kChannels * kFramesAFrame> stereo_{};
};
