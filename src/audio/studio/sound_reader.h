// Decodes an Ogg Vorbis stream that lies in memory into stereo frames; a mono stream is heard from both sides.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "audio/studio/result.h"

namespace Studio {

inline constexpr std::size_t kStereo = 2;

class SoundReader {
 public:
  SoundReader();
  SoundReader(const SoundReader&) = delete;
  SoundReader& operator=(const SoundReader&) = delete;
  ~SoundReader();

  /// Reads the stream's head. `data` is not owned and must outlive the reader.
  Result Open(std::span<const std::uint8_t> data);
  /// The next frames into `stereo` (two floats a frame, full scale 1); fewer than asked for at the end.
  std::size_t Read(float* stereo, std::size_t frames);
  /// As Read, and goes on at the beginning after the end; fewer than asked for only when the stream gives nothing.
  std::size_t ReadLooped(float* stereo, std::size_t frames);
  /// Whether the stream can be music: a tenth of a second to kMaxSeconds long, and gives sound. Leaves it at its
  /// beginning.
  Result CheckMusic();
  /// Back to the first frame; false when the stream does not let itself be read again.
  bool Rewind();

  int GetRate() const { return rate_; }          ///< frames a second
  int GetChannels() const { return channels_; }  ///< of the stream: 1 or 2
  /// How long the stream's head says that it is; it need not be true.
  std::int64_t GetClaimedFrames() const { return frames_; }

 private:
  struct Stream;
  std::unique_ptr<Stream> stream_;
  std::int64_t frames_ = 0;  // as its head says
  int rate_ = 0;
  int channels_ = 0;
};

/// A whole sound in memory.
struct Samples {
  std::vector<float> stereo;
  int rate = 0;      ///< frames a second
  int channels = 0;  ///< of the stream it came from
  std::size_t GetFrames() const { return stereo.size() / kStereo; }
};

/// Decodes what is really there, whatever length the stream claims; at most kMaxSeconds. A stream that claims more is
/// refused unread, so that a small file of hours of silence costs no time.
Result DecodeAll(std::span<const std::uint8_t> data, Samples& samples);

}  // namespace Studio
