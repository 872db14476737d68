// One sound as it is heard: an OpenAL source that plays samples from memory once, or a stream round and round. Its
// loudness never jumps: it moves over some updates, and the library ramps within each.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace Studio {

class SoundReader;

class Voice {
 public:
  /// Makes the source, in the current output; false when it gives no more.
  bool Create();
  /// Frees everything that lies in the output.
  void Destroy();

  /// Plays a buffer of the library once. A voice that starts paused waits in silence.
  void StartBuffer(std::uint32_t buffer, float pitch, float gain, bool paused);
  /// Plays what the reader gives from where it stands; the reader must outlive the play, though not its fading away.
  void StartStream(SoundReader& reader, float pitch, float gain, bool paused);
  /// Towards silence over some updates, then free.
  void FadeAway(int updates);
  /// Free at once.
  void Cut();

  /// Once a system update: moves towards the gain (0 while paused), keeps the stream fed, and frees what has ended.
  void Update(float gain, bool paused);

  bool IsFree() const { return state_ == State::kFree; }
  bool IsFadingAway() const { return state_ == State::kFadingAway; }
  /// Started and not updated since: nothing of it has been heard yet.
  bool IsFresh() const { return fresh_; }
  float GetGain() const { return gain_; }
  void SetPitch(float pitch) const;
  /// For a fresh voice, whose gain need not move step by step.
  void SetFreshGain(float gain);

  std::int32_t instance = -1;  ///< index of the instance that is heard, for whoever owns the voices

 private:
  enum class State { kFree, kPlaying, kFadingAway };
  static constexpr std::size_t kStreamBuffers = 8;

  void Start(float pitch, float gain, bool paused);
  void MoveGain(float target);
  void PauseOrResume(bool paused);
  void FeedStream(int most);
  bool HasEnded() const;

  std::uint32_t source_ = 0;
  std::array<std::uint32_t, kStreamBuffers> buffers_{};
  std::size_t buffersMade_ = 0;
  std::vector<std::uint32_t> idleBuffers_;
  SoundReader* reader_ = nullptr;
  State state_ = State::kFree;
  bool fresh_ = false;
  bool paused_ = false;
  float gain_ = 0.0f;
  float fadeStep_ = 0.0f;  // per update, while fading away
  int silentUpdates_ = 0;  // in a row
};

}  // namespace Studio
