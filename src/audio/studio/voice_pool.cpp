#include "audio/studio/voice_pool.h"

#include <AL/al.h>
#include <AL/alext.h>

#include <algorithm>

namespace Studio {

VoicePool::~VoicePool() { Close(); }

void VoicePool::Open(std::unique_ptr<Output> output, int voices) {
  Close();
  output_ = std::move(output);
  output_->MakeCurrent();
  alListenerf(AL_GAIN, kMasterGain);
  const auto wanted = static_cast<std::size_t>(std::clamp(voices + kFadingVoices, 1, kMostVoices));
  while (count_ < wanted && voices_[count_].Create()) ++count_;
}

void VoicePool::Close() {
  if (!output_) return;
  for (Voice& voice : GetVoices()) voice.Destroy();
  count_ = 0;
  for (const std::uint32_t& buffer : buffers_)
    if (buffer != 0) alDeleteBuffers(1, &buffer);
  buffers_.clear();
  output_.reset();
}

std::uint32_t VoicePool::GetBuffer(std::size_t index, const Samples& samples) {
  if (index >= buffers_.size()) buffers_.resize(index + 1, 0);
  if (buffers_[index] == 0) {
    alGenBuffers(1, &buffers_[index]);
    alBufferData(buffers_[index], AL_FORMAT_STEREO_FLOAT32, samples.stereo.data(),
                 static_cast<ALsizei>(samples.stereo.size() * sizeof(float)), samples.rate);
  }
  return buffers_[index];
}

Voice* VoicePool::Take() {
  Voice* quietest = nullptr;
  for (Voice& voice : GetVoices()) {
    if (voice.IsFree()) return &voice;
    if (voice.IsFadingAway() && (quietest == nullptr || voice.GetGain() < quietest->GetGain())) quietest = &voice;
  }
  if (quietest != nullptr) quietest->Cut();
  return quietest;
}

}  // namespace Studio
