#include "audio/studio/sound_reader.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "audio/studio/bank_file.h"
#include "audio/studio/output.h"

namespace Studio {

namespace {

constexpr std::size_t kChunk = 16384;  // frames decoded at a time
constexpr int kLowestRate = 8000;
constexpr int kHighestRate = 192000;
constexpr int kShortestShare = 10;  // of a second, below which a stream is no music
constexpr int kMostRewinds = 2;     // of one reading
constexpr std::size_t kMostFrames = static_cast<std::size_t>(kMaxSeconds) * kOutputRate;  // whatever the rate

struct SoundFileCloser {
  void operator()(SNDFILE* file) const { sf_close(file); }
};

}  // namespace

struct SoundReader::Stream {
  std::span<const std::uint8_t> data;
  sf_count_t place = 0;
  std::unique_ptr<SNDFILE, SoundFileCloser> file;
  std::vector<float> mono;  // before it is doubled
};

namespace {

template <class Stream>
SF_VIRTUAL_IO MakeMemoryAccess() {
  SF_VIRTUAL_IO io{};
  io.get_filelen = [](void* user) { return static_cast<sf_count_t>(static_cast<Stream*>(user)->data.size()); };
  io.seek = [](sf_count_t offset, int whence, void* user) {
    auto& stream = *static_cast<Stream*>(user);
    const auto size = static_cast<sf_count_t>(stream.data.size());
    const sf_count_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? stream.place : size;
    stream.place = std::clamp<sf_count_t>(base + offset, 0, size);
    return stream.place;
  };
  io.read = [](void* target, sf_count_t count, void* user) {
    auto& stream = *static_cast<Stream*>(user);
    const sf_count_t left = static_cast<sf_count_t>(stream.data.size()) - stream.place;
    const sf_count_t taken = std::clamp<sf_count_t>(count, 0, left);
    std::memcpy(target, stream.data.data() + stream.place, static_cast<std::size_t>(taken));
    stream.place += taken;
    return taken;
  };
  io.tell = [](void* user) { return static_cast<Stream*>(user)->place; };
  return io;
}

}  // namespace

SoundReader::SoundReader() : stream_(std::make_unique<Stream>()) {}
SoundReader::~SoundReader() = default;

Result SoundReader::Open(std::span<const std::uint8_t> data) {
  // Only this kind: the library would also try every other format that it knows on bytes from a file.
  constexpr std::string_view kOggMagic = "OggS";
  if (data.size() < kOggMagic.size() || !std::equal(kOggMagic.begin(), kOggMagic.end(), data.begin()))
    return Result::kSoundDamaged;
  stream_->file.reset();
  stream_->data = data;
  stream_->place = 0;
  static SF_VIRTUAL_IO access = MakeMemoryAccess<Stream>();
  SF_INFO info{};
  stream_->file.reset(sf_open_virtual(&access, SFM_READ, &info, stream_.get()));
  if (!stream_->file) return Result::kSoundDamaged;
  const bool known = info.format == (SF_FORMAT_OGG | SF_FORMAT_VORBIS) && info.channels >= 1 && info.channels <= 2 &&
                     info.samplerate >= kLowestRate && info.samplerate <= kHighestRate;
  if (!known) {
    stream_->file.reset();
    return Result::kSoundDamaged;
  }
  frames_ = info.frames;
  rate_ = info.samplerate;
  channels_ = info.channels;
  return Result::kOk;
}

std::size_t SoundReader::Read(float* stereo, std::size_t frames) {
  if (!stream_->file) return 0;
  SNDFILE* file = stream_->file.get();
  if (channels_ == static_cast<int>(kStereo)) {
    const sf_count_t read = sf_readf_float(file, stereo, static_cast<sf_count_t>(frames));
    return static_cast<std::size_t>(std::max<sf_count_t>(read, 0));
  }
  stream_->mono.resize(frames);
  const sf_count_t read = sf_readf_float(file, stream_->mono.data(), static_cast<sf_count_t>(frames));
  const auto got = static_cast<std::size_t>(std::max<sf_count_t>(read, 0));
  for (std::size_t i = 0; i < got; ++i) stereo[kStereo * i] = stereo[kStereo * i + 1] = stream_->mono[i];
  return got;
}

std::size_t SoundReader::ReadLooped(float* stereo, std::size_t frames) {
  std::size_t done = 0;
  // A stream that is far shorter than its head says must not be begun again and again within an update.
  for (int rewinds = 0; done < frames;) {
    const std::size_t got = Read(stereo + kStereo * done, frames - done);
    if (got == 0 && (++rewinds > kMostRewinds || !Rewind())) break;
    done += got;
  }
  return done;
}

Result SoundReader::CheckMusic() {
  if (frames_ > static_cast<std::int64_t>(rate_) * kMaxSeconds) return Result::kSoundTooLong;
  std::array<float, kStereo> first{};
  const bool sounds = frames_ >= rate_ / kShortestShare && Read(first.data(), 1) == 1 && Rewind();
  return sounds ? Result::kOk : Result::kSoundDamaged;
}

bool SoundReader::Rewind() { return stream_->file && sf_seek(stream_->file.get(), 0, SEEK_SET) == 0; }

Result DecodeAll(std::span<const std::uint8_t> data, Samples& samples) {
  SoundReader reader;
  const Result result = reader.Open(data);
  if (result != Result::kOk) return result;
  if (reader.GetClaimedFrames() > static_cast<std::int64_t>(kMostFrames)) return Result::kSoundTooLong;
  Samples decoded{{}, reader.GetRate(), reader.GetChannels()};
  for (std::size_t frames = 0;;) {
    decoded.stereo.resize(kStereo * (frames + kChunk));
    const std::size_t got = reader.Read(decoded.stereo.data() + kStereo * frames, kChunk);
    frames += got;
    decoded.stereo.resize(kStereo * frames);
    if (got == 0) break;
    if (frames > kMostFrames) return Result::kSoundTooLong;
  }
  if (decoded.stereo.empty()) return Result::kSoundDamaged;
  decoded.stereo.shrink_to_fit();
  samples = std::move(decoded);
  return Result::kOk;
}

}  // namespace Studio
