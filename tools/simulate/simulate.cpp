#include "tools/simulate/simulate.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <sstream>
#include <system_error>

#include "audio/audio.h"
#include "build_world.h"
#include "core/file_cache.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/random.h"
#include "editor/editor.h"
#include "frame.h"
#include "game_events.h"
#include "graphics/background.h"
#include "graphics/renderer.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "match/players.h"
#include "screens/logo_screen_script.h"
#include "screens/start_up.h"
#include "tools/simulate/digest.h"
#include "tools/simulate/input_script.h"
#include "tools/simulate/match_recorder.h"
#include "tools/simulate/sound_recorder.h"
#include "tools/simulate/trace.h"

namespace {

constexpr double kFrameSeconds = 1.0 / 60.0;
constexpr int kMostFrames = 200000;  // of a match that does not end

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdout) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

int Fail(const std::string& name, const char* why) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), why);
  return 1;
}

bool ReadText(const std::string& path, std::string& text) {
  std::error_code error;
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path, error)) return false;
  std::ostringstream all;
  all << file.rdbuf();
  text = all.str();
  return true;
}

// As the game reads it, which then has it already.
bool IsReadableLevel(const std::string& name) {
  const std::string* text = ReadCachedFile(name);
  return text != nullptr && !text->empty();
}

// The same steps as the game's start, without a window.
void StartGame(ScriptedPlatform& platform, const SimulateOptions& options) {
  SetPlatform(platform);
  BuildWorld();
  SeedRandom(kFirstSeed);
  Input::ReopenGamepads();
  Input::GetPointer().window = platform.GetWindowRect();
  Audio::Init(options.wavFile.empty() ? Audio::Output::kNone : Audio::Output::kLoopback);
  BindKeys();
  GetEditor().Init();
  GetRenderer().Init();
  SetDemoMode(options.pilots || options.matches > 0);
  if (options.boot) CreateLogoScreen();
  GetBackground();
  if (options.boot) return;
  if (options.match) {
    StartFirstMatch();
    return;
  }
  Audio::LoadEffects();
  Objects().LoadLevel(options.level);
}

void PrintSummary(std::FILE* out, int frames, double wallSeconds) {
  const double realSeconds = frames * kFrameSeconds;
  std::fprintf(out, "frames %d\n", frames);
  std::fprintf(out, "game seconds %.9g\n", static_cast<double>(Time().elapsedTime));
  std::fprintf(out, "wall seconds %.3f\n", wallSeconds);
  std::fprintf(out, "times real time %.1f\n", wallSeconds > 0.0 ? realSeconds / wallSeconds : 0.0);
  std::fprintf(out, "objects %zu\n", Objects().GetObjects().size());
  std::fflush(out);
}

// What a run writes down, and the loop that feeds it.
class Run {
 public:
  Run(const SimulateOptions& options, ScriptedPlatform& platform, InputScript& input, std::FILE* out, Trace* trace,
      SoundRecorder* sound)
      : options_(options), platform_(platform), input_(input), out_(out), trace_(trace), sound_(sound) {}

  /// False when a match that should end did not.
  bool Go() {
    if (options_.matches > 0) return PlayMatches();
    if (options_.untilEnd) return PlayToTheEnd();
    while (done_ < options_.frames && platform_.running) RunFrame();
    return true;
  }
  int GetFrames() const { return done_; }
  /// What was wrong with the input line that ended the run; empty when none did.
  const std::string& GetInputError() const { return inputError_; }
  const MatchRecorder& GetMatch() const { return match_; }

 private:
  void RunFrame() {
    if (trace_ != nullptr) trace_->BeginFrame(done_);
    if (!input_.Apply(done_, platform_, inputError_)) {
      platform_.running = false;
      return;
    }
    frame_.Run();
    match_.EndFrame();
    if (trace_ != nullptr) trace_->EndFrame();
    if (sound_ != nullptr) sound_->RecordFrame();
    ++done_;
  }

  bool PlayToTheEnd() {
    const int start = done_;
    while (!match_.IsAtPodium() && platform_.running) {
      if (done_ - start == kMostFrames) {
        std::fprintf(stderr, "the match did not end in %d frames\n", kMostFrames);
        return false;
      }
      RunFrame();
    }
    return true;
  }

  bool PlayMatches() {
    for (int i = 0; i < options_.matches && platform_.running; ++i) {
      if (i > 0) {
        if (trace_ != nullptr) trace_->BeginFrame(done_);
        NewGame();
      }
      const int start = done_;
      if (!PlayToTheEnd()) return false;
      match_.FinishMatch(out_, done_ - start);
    }
    match_.PrintTables(out_);
    return true;
  }

  const SimulateOptions& options_;
  ScriptedPlatform& platform_;
  InputScript& input_;
  std::FILE* out_;
  Trace* trace_;
  SoundRecorder* sound_;
  MatchRecorder match_{trace_};
  GameEvents events_;
  Frame frame_{events_};
  int done_ = 0;
  std::string inputError_;
};

}  // namespace

int Simulate(const SimulateOptions& options) {
  Audio::SilenceLibraries();
  SetPrintTarget(stderr);
  InputScript input;
  if (!options.inputFile.empty()) {
    std::string text;
    if (!ReadText(options.inputFile, text)) return Fail(options.inputFile, "cannot be read");
    std::string error;
    if (!input.Parse(text, error)) {
      std::fprintf(stderr, "%s: %s\n", options.inputFile.c_str(), error.c_str());
      return 2;
    }
  }
  File traceFile;
  if (!options.traceFile.empty()) {
    traceFile.reset(options.traceFile == "-" ? stdout : std::fopen(options.traceFile.c_str(), "w"));
    if (!traceFile) return Fail(options.traceFile, "cannot be written");
  }
  std::optional<SoundRecorder> sound;
  if (!options.wavFile.empty() && !sound.emplace().Open(options.wavFile))
    return Fail(options.wavFile, "cannot be written");
  std::error_code error;
  std::filesystem::current_path(options.dataFolder, error);
  if (error) return Fail(options.dataFolder, "is no folder that can be entered");
  const std::string level = options.level.empty() ? "level1" : options.level;
  if (!IsReadableLevel(level))
    return Fail(level, "no such level in the data folder, or an empty one, or one that cannot be read");

  std::optional<Trace> trace;
  if (traceFile) trace.emplace(traceFile.get());
  std::FILE* out = options.traceFile == "-" ? stderr : stdout;
  ScriptedPlatform platform;
  Run run(options, platform, input, out, trace ? &*trace : nullptr, sound ? &*sound : nullptr);
  StartGame(platform, options);
  const auto start = std::chrono::steady_clock::now();
  int result = run.Go() ? 0 : 1;
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;

  if (!run.GetInputError().empty()) {
    std::fprintf(stderr, "%s: %s\n", options.inputFile.c_str(), run.GetInputError().c_str());
    return 2;
  }
  if (options.digest) std::fprintf(out, "digest %016" PRIX64 "\n", StateDigest());
  if (!options.saveName.empty() && !Objects().SaveLevel(options.saveName))
    result = Fail(options.saveName, "could not be saved in the data folder");
  if (sound && !sound->IsWhole()) result = Fail(options.wavFile, "could not be written to its end");
  PrintSummary(out, run.GetFrames(), wall.count());
  if (run.GetMatch().IsDecided()) run.GetMatch().PrintRanking(out);
  AbandonStartUp();
  Audio::Shutdown();
  return result;
}
