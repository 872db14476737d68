#include "audio/studio/wav_writer.h"

#include <sndfile.h>

namespace Studio {

struct WavWriter::File {
  explicit File(SNDFILE* opened) : handle(opened) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() { sf_close(handle); }
  SNDFILE* handle;
};

WavWriter::WavWriter() = default;
WavWriter::~WavWriter() = default;

bool WavWriter::Open(const std::string& path, int rate, int channels) {
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  SNDFILE* handle = sf_open(path.c_str(), SFM_WRITE, &info);
  if (handle == nullptr) return false;
  sf_command(handle, SFC_SET_CLIPPING, nullptr, SF_TRUE);
  file_ = std::make_unique<File>(handle);
  return true;
}

bool WavWriter::Write(std::span<const std::int16_t> frames) {
  const auto count = static_cast<sf_count_t>(frames.size());
  return file_ && sf_write_short(file_->handle, frames.data(), count) == count;
}

bool WavWriter::Write(std::span<const float> frames) {
  const auto count = static_cast<sf_count_t>(frames.size());
  return file_ && sf_write_float(file_->handle, frames.data(), count) == count;
}

}  // namespace Studio
