#include "audio/studio/voice.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <algorithm>

#include "audio/studio/sound_reader.h"

namespace Studio {

namespace {

constexpr float kGainStep = 0.25f;  // largest change in an update: 4 updates, 67 ms, from silence to full
// Updates of silence before a source is halted: a device mixes up to 50 ms ahead, and what it has mixed it plays.
constexpr int kSilentUpdates = 4;
constexpr std::size_t kStreamFrames = 4096;  // a buffer, 85 ms at 48000 frames a second
constexpr int kBuffersAtStart = 2;           // 170 ms
constexpr int kBuffersAnUpdate = 2;          // full after some updates, so that no frame decodes much

}  // namespace

bool Voice::Create() {
  alGetError();
  alGenSources(1, &source_);
  if (alGetError() != AL_NO_ERROR) return false;
  // As it is in the file, wherever a listener would be.
  alSourcei(source_, AL_SOURCE_RELATIVE, AL_TRUE);
  alSourcef(source_, AL_ROLLOFF_FACTOR, 0.0f);
  if (alIsExtensionPresent("AL_SOFT_source_resampler") == AL_TRUE)
    alSourcei(source_, AL_SOURCE_RESAMPLER_SOFT, alGetInteger(AL_NUM_RESAMPLERS_SOFT) - 1);  // the last is the best
  return true;
}

void Voice::Destroy() {
  if (source_ == 0) return;
  Cut();
  alDeleteSources(1, &source_);
  alDeleteBuffers(static_cast<ALsizei>(buffersMade_), buffers_.data());
  *this = Voice{};
}

void Voice::Start(float pitch, float gain, bool paused) {
  state_ = State::kPlaying;
  fresh_ = true;
  paused_ = paused;
  gain_ = paused ? 0.0f : gain;
  silentUpdates_ = 0;
  alSourcef(source_, AL_PITCH, pitch);
  alSourcef(source_, AL_GAIN, gain_);
  if (!paused_) alSourcePlay(source_);
}

void Voice::StartBuffer(std::uint32_t buffer, float pitch, float gain, bool paused) {
  alSourcei(source_, AL_BUFFER, static_cast<ALint>(buffer));
  Start(pitch, gain, paused);
}

void Voice::StartStream(SoundReader& reader, float pitch, float gain, bool paused) {
  if (buffersMade_ == 0) {
    alGenBuffers(kStreamBuffers, buffers_.data());
    buffersMade_ = kStreamBuffers;
  }
  idleBuffers_.assign(buffers_.begin(), buffers_.end());
  reader_ = &reader;
  FeedStream(kBuffersAtStart);
  Start(pitch, gain, paused);
}

void Voice::FadeAway(int updates) {
  if (fresh_ || gain_ <= 0.0f) return Cut();
  state_ = State::kFadingAway;
  fadeStep_ = gain_ / static_cast<float>(updates);
  reader_ = nullptr;  // what is queued lasts for the fade
}

void Voice::Cut() {
  if (state_ == State::kFree) return;
  alSourceStop(source_);
  alSourcei(source_, AL_BUFFER, 0);  // lets go of a queue too
  alSourceRewind(source_);           // a source that has not begun has not ended either, see HasEnded
  reader_ = nullptr;
  state_ = State::kFree;
  fresh_ = false;
  instance = -1;
}

void Voice::Update(float gain, bool paused) {
  if (state_ == State::kFree) return;
  fresh_ = false;
  MoveGain(state_ == State::kFadingAway || paused ? 0.0f : gain);
  if (state_ == State::kFadingAway) {
    if (silentUpdates_ >= kSilentUpdates || HasEnded()) Cut();
    return;
  }
  PauseOrResume(paused);
  if (reader_ != nullptr) FeedStream(kBuffersAnUpdate);
  if (!HasEnded()) return;
  // A stream ran dry while nobody fed it, or its file gives nothing more.
  ALint queued = 0;
  alGetSourcei(source_, AL_BUFFERS_QUEUED, &queued);
  if (reader_ != nullptr && queued > 0)
    alSourcePlay(source_);
  else
    Cut();
}

void Voice::MoveGain(float target) {
  const float step = state_ == State::kFadingAway ? fadeStep_ : kGainStep;
  const float moved = gain_ + std::clamp(target - gain_, -step, step);
  if (moved != gain_) alSourcef(source_, AL_GAIN, moved);
  gain_ = moved;
  silentUpdates_ = gain_ > 0.0f ? 0 : silentUpdates_ + 1;
}

void Voice::PauseOrResume(bool paused) {
  if (paused_ && !paused) {
    alSourcePlay(source_);
    paused_ = false;
  } else if (paused && !paused_ && silentUpdates_ >= kSilentUpdates) {
    alSourcePause(source_);
    paused_ = true;
  }
}

void Voice::FeedStream(int most) {
  ALint processed = 0;
  alGetSourcei(source_, AL_BUFFERS_PROCESSED, &processed);
  for (; processed > 0; --processed) {
    ALuint buffer = 0;
    alSourceUnqueueBuffers(source_, 1, &buffer);
    idleBuffers_.push_back(buffer);
  }
  std::array<float, kStereo * kStreamFrames> stereo;
  for (; most > 0 && !idleBuffers_.empty(); --most) {
    const std::size_t frames = reader_->ReadLooped(stereo.data(), kStreamFrames);
    if (frames == 0) return;
    const ALuint buffer = idleBuffers_.back();
    idleBuffers_.pop_back();
    alBufferData(buffer, AL_FORMAT_STEREO_FLOAT32, stereo.data(),
                 static_cast<ALsizei>(kStereo * frames * sizeof(float)), reader_->GetRate());
    alSourceQueueBuffers(source_, 1, &buffer);
  }
}

// A paused source, and one that has not begun, has not ended.
bool Voice::HasEnded() const {
  ALint state = AL_PLAYING;
  alGetSourcei(source_, AL_SOURCE_STATE, &state);
  return state == AL_STOPPED;
}

void Voice::SetFreshGain(float gain) {
  if (paused_) return;  // it comes in from silence anyway
  gain_ = gain;
  alSourcef(source_, AL_GAIN, gain);
}

void Voice::SetPitch(float pitch) const { alSourcef(source_, AL_PITCH, pitch); }

}  // namespace Studio
