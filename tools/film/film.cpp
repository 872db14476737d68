#include "tools/film/film.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>

#include "core/print.h"
#include "graphics/renderer.h"
#include "tools/film/camera_crew.h"
#include "tools/film/film_file.h"
#include "tools/film/offscreen_gl.h"
#include "tools/film/run_length.h"

namespace {

constexpr Lens kWindow = {1280, 720, 1};
constexpr int kFilmRate = 30;  // pictures a second, where nothing else is asked for
constexpr int kGifRate = 15;

bool IsFilm(const FilmOptions& options) { return !options.moments && options.rows == 0 && IsFilmName(options.out); }

// What was left open: the match, its whole length, and what suits the output.
void FillIn(FilmOptions& options) {
  options.match = options.match || (options.level.empty() && !options.boot);
  if (options.frames < 0 && options.match) options.untilEnd = true;
  if (options.to < 0) options.to = std::numeric_limits<int>::max() - 1;
  const bool gif = IsFilm(options) && IsGifName(options.out);
  if (options.every == 0 && options.rate == 0) {
    options.every = IsFilm(options) ? 0 : 1;
    options.rate = !IsFilm(options) ? 0 : gif ? kGifRate : kFilmRate;
  }
  if (options.width > 0) return;
  options.width = options.rows > 0 ? kWindow.width / 4 : gif ? kWindow.width * 3 / 8 : kWindow.width;
  options.height = options.width * kWindow.height / kWindow.width;
}

int CheckOptions(const FilmOptions& options) {
  if (options.out.empty() && !options.times) return RefuseUsage("--out says where the pictures go; --times needs none");
  if (options.frames < 0 && !options.untilEnd)
    return RefuseUsage("how long does it run? --to, --frames or --until-end");
  if (options.moments && (options.every > 1 || options.rate > 0 || options.from > 0))
    return RefuseUsage("--moments chooses its frames itself: without --from, --every and --fps");
  if (options.rows > 0 && (options.every > 1 || options.rate > 0))
    return RefuseUsage("a sheet's frames are evenly spaced: without --every and --fps");
  if (options.from > options.to) return RefuseUsage("--from is behind --to");
  if (options.moments && options.rows > 0) return RefuseUsage("--sheet and --moments exclude each other");
  if (options.rows > 0 && !IsPngName(options.out)) return RefuseUsage("--sheet makes one picture: --out FILE.png");
  if (IsFilm(options) && !IsGifName(options.out) && (options.width % 2 != 0 || options.height % 2 != 0))
    return RefuseUsage("a film's width and height must be even");
  std::error_code ignored;
  const bool folder = !HasFileEnding(options.out) || std::filesystem::is_directory(options.out, ignored);
  if (options.rows == 0 && !IsFilm(options) && !folder)
    return RefuseUsage(options.moments ? "--moments makes many pictures: --out is a folder for them"
                                       : "--out is a folder, or a FILE.webm, FILE.mp4 or FILE.gif");
  if ((options.rows > 0 || IsFilm(options)) && std::filesystem::exists(options.out, ignored) &&
      !std::filesystem::is_regular_file(options.out, ignored))
    return RefuseUsage("--out is there and is no file");
  if (options.columns * (options.width + kSheetGap) > kLongestSide ||
      options.rows * (options.height + kSheetGap) > kLongestSide)
    return RefuseUsage("a sheet has at most 8192 pixels each way");
  return 0;
}

Schedule PlanFrames(const FilmOptions& options, int total) {
  if (options.rows > 0)
    return SpreadEvenly(options.from, std::min(options.to, total - 1), options.rows * options.columns);
  if (options.every > 0) return {options.from, options.to, options.every, 1};
  return {options.from, options.to, kFramesASecond, options.rate};
}

// A small window would flicker, since pictures are not made smaller than by half without loss; so a larger one is
// drawn and averaged. Measuring measures what was asked for.
Lens ChooseLens(const FilmOptions& options) {
  const int scale = options.out.empty() || options.coarse
                        ? 1
                        : std::min(kWindow.width / options.width, kWindow.height / options.height);
  return {options.width, options.height, std::max(1, scale)};
}

FilmFormat ChooseFormat(const FilmOptions& options) {
  FilmFormat format{options.width, options.height, options.rate, 1, false};
  if (options.rate == 0) {
    format.rate = kFramesASecond;
    format.rateBase = options.every;
  }
  const bool realTime = options.every == 0 || options.rate == 0 || options.every * options.rate == kFramesASecond;
  format.sound = realTime && !IsGifName(options.out);
  if (!realTime) std::fprintf(stderr, "the film is slower or faster than the run, so it has no sound\n");
  return format;
}

std::unique_ptr<Output> MakeOutput(const FilmOptions& options, const FilmFormat& format) {
  if (options.out.empty()) return nullptr;
  if (options.rows > 0)
    return MakeContactSheet(options.out, options.rows, options.columns, options.width, options.height);
  if (IsFilm(options)) return MakeFilmFile(options.out, format);
  return MakePictureFolder(options.out);
}

void PrintTimes(const CameraCrew& crew, const std::string& context) {
  std::printf("pictures %d\n", crew.CountPictures());
  std::printf("frame time median %.2f ms\n", crew.TimeOf(0.5));
  std::printf("frame time 99th percentile %.2f ms\n", crew.TimeOf(0.99));
  std::printf("driver %s\n", context.c_str());
}

}  // namespace

int Film(FilmOptions options) {
  Audio::SilenceLibraries();
  SetPrintTarget(stderr);
  if (options.frames < 0 && options.to >= 0) options.frames = std::min(options.to, kMostFrames - 1) + 1;
  InputScript input;
  if (const int result = ReadInput(options, input); result != 0) return result;
  if (input.IsRecording()) options.frames = std::min(options.frames, input.CountFrames());
  FillIn(options);
  if (const int wrong = CheckOptions(options); wrong != 0) return wrong;
  if (const int wrong = CheckPlayers(options, input); wrong != 0) return wrong;
  if (const int result = EnterDataFolder(options, input); result != 0) return result;
  const bool lengthCounts = options.rows > 0 || Progress::IsSeen();
  const int total = !options.untilEnd ? options.frames : lengthCounts ? MeasureRunLength(options, input) : 0;
  const FilmFormat format = IsFilm(options) ? ChooseFormat(options) : FilmFormat{};
  const auto output = MakeOutput(options, format);
  if (output) {
    if (const std::string error = output->Open(); !error.empty()) return FailFile(options.out, error);
  }

  const Lens lens = ChooseLens(options);
  OffscreenGl gl;
  if (const std::string error = gl.Open(lens.width * lens.scale, lens.height * lens.scale); !error.empty())
    return FailFile("no pictures without OpenGL", error);
  std::optional<Moments> moments;
  if (options.moments) moments.emplace();
  GameRun run(options, std::move(input), stdout, moments ? &*moments : nullptr);
  run.Start(format.sound ? Audio::Output::kLoopback : Audio::Output::kNone);
  GetRenderer().FitPicture(lens.width * lens.scale, lens.height * lens.scale);
  CameraCrew crew(lens, PlanFrames(options, total), moments ? &*moments : nullptr, output.get(), format.sound, total);
  int result = run.Go(crew);
  if (result == kWrongUsage) return result;
  crew.EndProgress();
  if (moments && moments->CountWaiting() > 0)
    std::fprintf(stderr, "the run ended before %zu moments could be seen\n", moments->CountWaiting());
  if (crew.IsInterrupted()) return FailFile(options.out, "interrupted after frame " + std::to_string(run.GetFrames()));
  if (crew.CountPictures() == 0)
    result = FailFile(options.out, "no frame was filmed: the run ended after " + std::to_string(run.GetFrames()));
  else if (const std::string error = output ? output->Finish() : std::string{}; !error.empty())
    result = FailFile(options.out, error);
  run.PrintDigest();
  run.PrintSummary();
  PrintTimes(crew, gl.GetContext());
  GameRun::Shutdown();
  return result;
}
