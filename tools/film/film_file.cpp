#include "tools/film/film_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include "audio/audio.h"
#include "audio/studio/wav_writer.h"
#include "core/replace_file.h"
#include "tools/film/encoder_process.h"
#include "tools/film/worker.h"

namespace {

constexpr std::size_t kRoom = 4;  // pictures that wait for the encoder
// A GIF's one palette is made of all its pictures, which ffmpeg keeps meanwhile.
constexpr long long kMostGifBytes = 1LL << 30;

using Words = std::vector<std::string>;

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() > end.size() && text.substr(text.size() - end.size()) == end;
}

// Pictures are of the colours that televisions of high definition have, as players take for granted.
constexpr char kColours[] = "scale=out_color_matrix=bt709:out_range=tv,format=yuv420p";

// How the pictures of a format are encoded, how its sound, and what the format is called.
struct Coding {
  Words pictures;
  Words sound;
  Words container;
};

Coding ChooseCoding(const std::string& file) {
  if (IsGifName(file))
    return {
        {"-filter_complex", "split[a][b];[a]palettegen=stats_mode=diff[p];[b][p]paletteuse=dither=bayer:bayer_scale=4"},
        {},
        {"-f", "gif"}};
  Words pictures = {"-vf", kColours, "-colorspace", "bt709", "-color_primaries", "bt709", "-color_trc", "bt709"};
  if (EndsWith(file, ".webm")) {
    for (const char* word : {"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "7", "-row-mt", "1",
                             "-tile-columns", "2", "-crf", "42", "-b:v", "0"})
      pictures.emplace_back(word);
    return {pictures, {"-c:a", "libopus", "-b:a", "128k"}, {"-f", "webm"}};
  }
  for (const char* word : {"-c:v", "libx264", "-preset", "veryfast", "-crf", "24"}) pictures.emplace_back(word);
  return {pictures, {"-c:a", "aac", "-b:a", "160k"}, {"-movflags", "+faststart", "-f", "mp4"}};
}

Words Join(std::initializer_list<Words> parts) {
  // Without -xerror a film whose end did not fit on the disk counts as a success.
  Words all = {"ffmpeg", "-hide_banner", "-loglevel", "error", "-xerror", "-y"};
  for (const Words& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The sound is added when all pictures are there. Through a second pipe it could be had in one go, but the encoder
// reads the two as it likes, and waits for one while we wait until it takes the other.
class FilmFile final : public Output {
 public:
  FilmFile(std::string file, const FilmFormat& format)
      : file_(std::move(file)),
        picturesFile_(format.sound ? file_ + ".pictures.tmp" : TemporaryOf(file_)),
        soundFile_(file_ + ".sound.tmp"),
        format_(format),
        coding_(ChooseCoding(file_)) {}
  ~FilmFile() override {
    if (!opened_) return;
    encoder_.Kill();
    pictures_.Finish();
    for (const std::string& file : {TemporaryOf(file_), picturesFile_, soundFile_}) ::unlink(file.c_str());
  }

  std::string Open() override {
    // Said before the run, which may be long, and in words of its own.
    const int file = ::open(picturesFile_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) return std::string("cannot be written: ") + std::strerror(errno);
    ::close(file);
    opened_ = true;
    if (format_.sound && !wav_.emplace().Open(soundFile_, Audio::kRate, 2)) return "its sound cannot be written";
    const std::string size = std::to_string(format_.width) + "x" + std::to_string(format_.height);
    const std::string rate = std::to_string(format_.rate) + "/" + std::to_string(format_.rateBase);
    return encoder_.Start(
        Join({{"-f", "rawvideo", "-pix_fmt", "rgb24", "-video_size", size, "-framerate", rate, "-i", "pipe:0"},
              coding_.pictures,
              coding_.container,
              {picturesFile_}}));
  }

  void AddPicture(const std::string& /*name*/, WindowPixels pixels) override {
    pictures_.Add([this, pixels = std::move(pixels)]() -> std::string {
      const Image picture = Reduce(pixels);
      held_ += 4LL * picture.width * picture.height;
      if (IsGifName(file_) && held_ > kMostGifBytes)
        return "a GIF of so many pictures does not fit into memory; fewer, smaller ones, or a .webm";
      return encoder_.Write(picture.rgb.data(), picture.rgb.size());
    });
  }

  void AddSound(std::span<const std::int16_t> stereo) override {
    if (wav_ && !wav_->Write(stereo)) soundError_ = "its sound cannot be written to its end";
  }

  std::string GetError() override {
    const std::string error = pictures_.GetError();
    return error.empty() ? soundError_ : error;
  }

  std::string Finish() override {
    std::string error = pictures_.Finish();
    if (!error.empty()) encoder_.Kill();
    const std::string ended = encoder_.Finish();
    if (error.empty()) error = ended;
    if (error.empty()) error = soundError_;
    if (error.empty() && wav_) error = JoinSound();
    if (error.empty() && std::rename(TemporaryOf(file_).c_str(), file_.c_str()) != 0) error = std::strerror(errno);
    return error;
  }

 private:
  std::string JoinSound() {
    wav_.reset();
    const std::string error = encoder_.Start(
        Join({{"-f", coding_.container.back(), "-i", picturesFile_, "-f", "wav", "-i", soundFile_, "-c:v", "copy"},
              coding_.sound,
              coding_.container,
              {TemporaryOf(file_)}}));
    return error.empty() ? encoder_.Finish() : error;
  }

  std::string file_;
  std::string picturesFile_;
  std::string soundFile_;
  FilmFormat format_;
  Coding coding_;
  bool opened_ = false;
  long long held_ = 0;  // bytes of the pictures so far
  std::optional<Studio::WavWriter> wav_;
  std::string soundError_;
  EncoderProcess encoder_;
  Worker pictures_{kRoom};
};

}  // namespace

bool HasFileEnding(std::string_view file) {
  const auto dot = file.find_last_of("./");
  return dot != std::string_view::npos && file[dot] == '.' && dot + 1 < file.size();
}

bool IsPngName(std::string_view file) { return EndsWith(file, ".png"); }

bool IsGifName(std::string_view file) { return EndsWith(file, ".gif"); }

bool IsFilmName(std::string_view file) { return EndsWith(file, ".webm") || EndsWith(file, ".mp4") || IsGifName(file); }

std::unique_ptr<Output> MakeFilmFile(const std::string& file, const FilmFormat& format) {
  return std::make_unique<FilmFile>(file, format);
}
