#include "tools/simulate/run.h"

#include <chrono>
#include <cinttypes>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "build_world.h"
#include "core/file_cache.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/random.h"
#include "editor/editor.h"
#include "graphics/background.h"
#include "graphics/renderer.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "match/players.h"
#include "screens/logo_screen_script.h"
#include "tools/simulate/digest.h"

namespace {

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

}  // namespace

int FailFile(const std::string& name, const std::string& why) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
  return 1;
}

int ReadInput(const RunOptions& options, InputScript& input) {
  if (options.inputFile.empty()) return 0;
  std::string text;
  if (!ReadText(options.inputFile, text)) return FailFile(options.inputFile, "cannot be read");
  std::string error;
  if (input.Parse(text, error)) return 0;
  FailFile(options.inputFile, error);
  return 2;
}

int EnterDataFolder(const RunOptions& options) {
  std::error_code error;
  std::filesystem::current_path(options.dataFolder, error);
  if (error) return FailFile(options.dataFolder, "is no folder that can be entered");
  const std::string level = options.level.empty() ? "level1" : options.level;
  if (IsReadableLevel(level)) return 0;
  return FailFile(level, "no such level in the data folder, or an empty one, or one that cannot be read");
}

void GameRun::Start(Audio::Output output) {
  SetPlatform(platform_);
  BuildWorld();
  SeedRandom(kFirstSeed);
  Input::ReopenGamepads();
  Input::GetPointer().window = platform_.GetWindowRect();
  Audio::Init(output);
  BindKeys();
  GetEditor().Init();
  GetRenderer().Init();
  SetDemoMode(options_.pilots || options_.matches > 0);
  if (options_.boot) CreateLogoScreen();
  GetBackground();
  if (options_.boot) return;
  if (options_.match) {
    StartFirstMatch();
    return;
  }
  Audio::LoadEffects();
  Objects().LoadLevel(options_.level);
}

int GameRun::Go(RunObserver& observer) {
  observer_ = &observer;
  const auto start = std::chrono::steady_clock::now();
  const bool ended = RunAll();
  wallSeconds_ = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  observer_ = nullptr;
  if (inputError_.empty()) return ended ? 0 : 1;
  FailFile(options_.inputFile, inputError_);
  return 2;
}

bool GameRun::RunAll() {
  if (options_.matches > 0) return PlayMatches();
  if (options_.untilEnd) return PlayToTheEnd();
  while (done_ < options_.frames && platform_.running) RunFrame();
  return true;
}

void GameRun::RunFrame() {
  observer_->BeginFrame(done_);
  if (!input_.Apply(done_, platform_, inputError_)) {
    platform_.running = false;
    return;
  }
  frame_.Run();
  match_.EndFrame();
  observer_->EndFrame(done_);
  ++done_;
}

bool GameRun::PlayToTheEnd() {
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

bool GameRun::PlayMatches() {
  for (int i = 0; i < options_.matches && platform_.running; ++i) {
    if (i > 0) {
      observer_->BeginFrame(done_);
      NewGame();
    }
    const int start = done_;
    if (!PlayToTheEnd()) return false;
    if (!match_.IsAtPodium()) break;
    match_.FinishMatch(out_, done_ - start);
  }
  match_.PrintTables(out_);
  return true;
}

void GameRun::PrintDigest() const {
  if (options_.digest) std::fprintf(out_, "digest %016" PRIX64 "\n", StateDigest());
}

void GameRun::PrintSummary() const {
  const double realSeconds = static_cast<double>(done_) / kFramesASecond;
  std::fprintf(out_, "frames %d\n", done_);
  std::fprintf(out_, "game seconds %.9g\n", static_cast<double>(Time().elapsedTime));
  std::fprintf(out_, "wall seconds %.3f\n", wallSeconds_);
  std::fprintf(out_, "times real time %.1f\n", wallSeconds_ > 0.0 ? realSeconds / wallSeconds_ : 0.0);
  std::fprintf(out_, "objects %zu\n", Objects().GetObjects().size());
  if (match_.IsDecided()) match_.PrintRanking(out_);
  std::fflush(out_);
}

void GameRun::Shutdown() {
  AbandonStartUp();
  Audio::Shutdown();
}
