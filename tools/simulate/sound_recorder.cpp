#include "tools/simulate/sound_recorder.h"

bool SoundRecorder::Open(const std::string& path) { return wav_.Open(path, Audio::kRate, kChannels); }

void SoundRecorder::RecordFrame() {
  Audio::Render(stereo_);
  whole_ = wav_.Write(std::span<const std::int16_t>(stereo_)) && whole_;
}
