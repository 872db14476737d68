#include "tools/film/film_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>
#include <vector>

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

Words PictureCoding(const std::string& file) {
  if (IsGifName(file))
    return {"-filter_complex",
            "split[a][b];[a]palettegen=stats_mode=diff[p];[b][p]paletteuse=dither=bayer:bayer_scale=4", "-f", "gif"};
  Words words = {"-vf", kColours, "-colorspace", "bt709", "-color_primaries", "bt709", "-color_trc", "bt709"};
  const Words coding = EndsWith(file, ".webm")
                           ? Words{"-c:v", "libvpx-vp9",    "-deadline", "realtime", "-cpu-used", "7",    "-row-mt",
                                   "1",    "-tile-columns", "2",         "-crf",     "33",        "-b:v", "0",
                                   "-c:a", "libopus",       "-b:a",      "128k",     "-f",        "webm"}
                           : Words{"-c:v", "libx264", "-preset", "veryfast",  "-crf",       "21", "-c:a",
                                   "aac",  "-b:a",    "160k",    "-movflags", "+faststart", "-f", "mp4"};
  words.insert(words.end(), coding.begin(), coding.end());
  return words;
}

Words CommandLine(const std::string& file, const FilmFormat& format) {
  Words words = {"ffmpeg",
                 "-hide_banner",
                 "-loglevel",
                 "error",
                 "-y",
                 "-f",
                 "rawvideo",
                 "-pix_fmt",
                 "rgb24",
                 "-video_size",
                 std::to_string(format.width) + "x" + std::to_string(format.height),
                 "-framerate",
                 std::to_string(format.rate) + "/" + std::to_string(format.rateBase),
                 "-i",
                 "pipe:0"};
  if (format.sound)
    for (const char* word : {"-f", "s16le", "-ar", "48000", "-ac", "2", "-i", "pipe:3"}) words.emplace_back(word);
  const Words coding = PictureCoding(file);
  words.insert(words.end(), coding.begin(), coding.end());
  words.push_back(TemporaryOf(file));
  return words;
}

class FilmFile final : public Output {
 public:
  FilmFile(std::string file, const FilmFormat& format) : file_(std::move(file)), format_(format) {}
  ~FilmFile() override {
    if (!opened_) return;
    encoder_.Kill();
    pictures_.Finish();
    sound_.Finish();
    ::unlink(TemporaryOf(file_).c_str());
  }

  std::string Open() override {
    // Said before the run, which may be long, and in words of its own.
    const int file = ::open(TemporaryOf(file_).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0) return std::string("cannot be written: ") + std::strerror(errno);
    ::close(file);
    opened_ = true;
    return encoder_.Start(CommandLine(file_, format_), format_.sound);
  }

  void AddPicture(const std::string& /*name*/, WindowPixels pixels) override {
    pictures_.Add([this, pixels = std::move(pixels)]() -> std::string {
      const Picture picture = Reduce(pixels);
      held_ += 4LL * picture.width * picture.height;
      if (IsGifName(file_) && held_ > kMostGifBytes)
        return "a GIF of so many pictures does not fit into memory; fewer, smaller ones, or a .webm";
      return encoder_.Write(EncoderProcess::kPictures, picture.rgb.data(), picture.rgb.size());
    });
  }

  // Any number of sound jobs may wait: the encoder asks for whichever of the two it lacks, and a caller who waited for
  // room on one side would keep the other from it.
  void AddSound(std::span<const std::int16_t> stereo) override {
    if (!format_.sound) return;
    sound_.Add([this, samples = std::vector<std::int16_t>(stereo.begin(), stereo.end())] {
      return encoder_.Write(EncoderProcess::kSound, samples.data(), samples.size() * sizeof samples[0]);
    });
  }

  std::string GetError() override {
    const std::string error = pictures_.GetError();
    return error.empty() ? sound_.GetError() : error;
  }

  std::string Finish() override {
    // Each pipe is closed as soon as it is empty: the encoder may wait for the end of one before it reads the other.
    sound_.Add([this] {
      encoder_.Close(EncoderProcess::kSound);
      return std::string{};
    });
    std::string error = pictures_.Finish();
    if (!error.empty()) encoder_.Kill();
    encoder_.Close(EncoderProcess::kPictures);
    const std::string soundError = sound_.Finish();
    encoder_.Close(EncoderProcess::kSound);  // after a failure nobody else did
    if (error.empty()) error = soundError;
    const std::string ended = encoder_.Wait();
    if (error.empty()) error = ended;
    if (error.empty() && std::rename(TemporaryOf(file_).c_str(), file_.c_str()) != 0) error = std::strerror(errno);
    return error;
  }

 private:
  std::string file_;
  FilmFormat format_;
  bool opened_ = false;
  long long held_ = 0;  // bytes of the pictures so far
  EncoderProcess encoder_;
  Worker pictures_{kRoom};
  Worker sound_{0};
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
