// All voices of the system with the output that they play into. Some more than may be heard at once: sounds that fade
// away do not keep new ones from starting.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "audio/studio/output.h"
#include "audio/studio/sound_reader.h"
#include "audio/studio/voice.h"

namespace Studio {

/// Of the whole mix, -3 dB: room for several loud sounds at once before the output's limiter has to act.
inline constexpr float kMasterGain = 0.708f;

class VoicePool {
 public:
  static constexpr int kFadingVoices = 16;
  static constexpr int kMostVoices = 64;

  VoicePool() = default;
  VoicePool(const VoicePool&) = delete;
  VoicePool& operator=(const VoicePool&) = delete;
  ~VoicePool();

  /// Makes the voices in the output and sends sound calls there; `voices` that may be heard at once.
  void Open(std::unique_ptr<Output> output, int voices);
  /// Ends every voice and gives the output back.
  void Close();

  /// Null while there is none.
  const Output* GetOutput() const { return output_.get(); }

  /// A free voice, or the quietest of those that fade away, which is cut; null when all are heard.
  Voice* Take();

  std::span<Voice> GetVoices() { return {voices_.data(), count_}; }

  /// The library's buffer of these samples, made when first asked for under this index.
  std::uint32_t GetBuffer(std::size_t index, const Samples& samples);

 private:
  std::unique_ptr<Output> output_;
  std::array<Voice, kMostVoices> voices_;
  std::size_t count_ = 0;
  std::vector<std::uint32_t> buffers_;  // 0: not made
};

}  // namespace Studio
