#include "tools/simulate/run.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cinttypes>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "build_world.h"
#include "core/data_place.h"
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
#include "tools/simulate/data_folder.h"
#include "tools/simulate/digest.h"
#include "tools/simulate/play_stage.h"

namespace {

// Some hours of four pads that are never still.
constexpr std::size_t kMostInputBytes = 1 << 28;
constexpr std::size_t kPiece = 1 << 16;

// What went wrong, or empty.
std::string ReadText(const std::string& path, std::string& text) {
  std::error_code error;
  std::ifstream file(path, std::ios::binary);
  if (!file || std::filesystem::is_directory(path, error)) return "cannot be read";
  std::array<char, kPiece> piece;
  while (file.read(piece.data(), piece.size()), file.gcount() > 0) {
    if (text.size() > kMostInputBytes) return "has more than 256 MB, which is no input";
    text.append(piece.data(), static_cast<std::size_t>(file.gcount()));
  }
  return {};
}

// As the game reads it, which then has it already.
bool IsReadableLevel(const std::string& name) {
  const std::string* text = ReadCachedFile(name);
  return text != nullptr && !text->empty();
}

// A seat without a bot is the game's own pilot's, but the first only when nobody else has it.
SeatNames NameSeats(const RunOptions& options) {
  SeatNames names;
  for (std::size_t seat = 0; seat < names.size(); ++seat)
    names[seat] = options.bots[seat] == BotKind::kNone ? "pilot" : NameOf(options.bots[seat]);
  if (options.mouse != BotKind::kNone) names[0] = "mouse-" + std::string(NameOf(options.mouse));
  return names;
}

// In the place of the folder's own match, which has been looked at.
int EnterStage(const RunOptions& options) {
  PlayStage stage;
  std::error_code error;
  std::string fault = stage.Read(options.stageFile, std::filesystem::current_path(error).string());
  if (fault.empty()) fault = stage.Enter();
  ClearFileCache();
  return fault.empty() ? 0 : FailFile(options.stageFile, fault);
}

}  // namespace

int FailFile(const std::string& name, const std::string& why) {
  std::fprintf(stderr, "%s: %s\n", name.c_str(), why.c_str());
  return 1;
}

int RefuseUsage(const char* why) {
  std::fprintf(stderr, "%s\n", why);
  return kWrongUsage;
}

int ReadInput(RunOptions& options, InputScript& input) {
  if (options.inputFile.empty()) return 0;
  std::string text;
  std::string error = ReadText(options.inputFile, text);
  if (!error.empty()) return FailFile(options.inputFile, error);
  if (!input.Parse(text, error)) {
    FailFile(options.inputFile, error);
    return kWrongUsage;
  }
  if (!input.IsRecording()) return 0;
  if (options.match || options.matches > 0 || !options.level.empty())
    return RefuseUsage("a recording begins with the start-up screens, not with --level, --match or --matches");
  options.boot = true;
  if (options.frames < 0 && !options.untilEnd) options.frames = input.CountFrames();
  return 0;
}

int CheckPlayers(const RunOptions& options, const InputScript& input) {
  if (input.IsRecording() && (options.HasBots() || options.seed != kFirstSeed))
    return RefuseUsage("a recording says who played, from the game's own seed: without --bots, --mouse and --seed");
  if (!options.stageFile.empty() && (input.IsRecording() || !options.match))
    return RefuseUsage("--stage is the match: with --match or --matches, without a recording");
  if (options.HasBots() && !options.match)
    return RefuseUsage("--bots and --mouse play matches: with --match or --matches");
  const bool mouse = options.mouse != BotKind::kNone;
  const bool firstPad = options.bots[0] != BotKind::kNone;
  if (static_cast<int>(mouse) + static_cast<int>(firstPad) + static_cast<int>(options.pilots) > 1)
    return RefuseUsage("who flies player 1? --mouse, the first of --bots, or --pilots");
  std::string error = mouse ? input.FindMouse() : "";
  for (int slot = 0; slot < kGamepadSlots && error.empty(); ++slot)
    if (options.bots[static_cast<std::size_t>(slot)] != BotKind::kNone) error = input.FindPad(slot);
  if (error.empty()) return 0;
  FailFile(options.inputFile, error);
  return kWrongUsage;
}

std::string EnterData(const RunOptions& options) {
  if (options.dataFolder.empty()) return EnterOwnData();
  std::error_code error;
  std::filesystem::current_path(options.dataFolder, error);
  return error ? options.dataFolder + ": is no folder that can be entered" : std::string{};
}

int EnterDataFolder(const RunOptions& options, const InputScript& input) {
  if (const std::string fault = EnterData(options); !fault.empty()) {
    std::fprintf(stderr, "%s\n", fault.c_str());
    return 1;
  }
  if (input.IsRecording()) {
    TellOtherData(options.inputFile, input.GetHeader());
    if (const std::string fault = EnterOverlay(); !fault.empty()) return FailFile("a folder of links", fault);
  }
  const std::string level = options.level.empty() ? "level1" : options.level;
  if (!IsReadableLevel(level))
    return FailFile(level, "no such level in the data folder, or an empty one, or one that cannot be read");
  return options.stageFile.empty() ? 0 : EnterStage(options);
}

void GameRun::Start(Audio::Output output, Platform* window) {
  if (window == nullptr)
    SetPlatform(platform_);
  else
    SetPlatform(*window);
  BuildWorld();
  SeedRandom(options_.seed);
  bots_.Connect(platform_);
  if (options_.HasBots()) match_.TellSeats(NameSeats(options_));
  Input::ReopenGamepads();
  Input::GetPointer().window = platform_.GetWindowRect();
  Audio::Init(output);
  BindKeys();
  GetEditor().Init();
  GetRenderer().Init();
  SetDemoMode(options_.pilots || (options_.matches > 0 && options_.mouse == BotKind::kNone));
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
  return kWrongUsage;
}

bool GameRun::Step(RunObserver& observer) {
  if (done_ >= options_.frames || !GetPlatform().running) return false;
  observer_ = &observer;
  RunFrame();
  observer_ = nullptr;
  return true;
}

bool GameRun::RunAll() {
  if (options_.matches > 0) return PlayMatches();
  if (options_.untilEnd) return PlayToTheEnd();
  while (done_ < options_.frames && GetPlatform().running) RunFrame();
  return true;
}

void GameRun::RunFrame() {
  observer_->BeginFrame(done_);
  if (!input_.Apply(done_, platform_, inputError_)) {
    GetPlatform().running = false;
    return;
  }
  bots_.Play(done_, platform_);
  frame_.Run();
  match_.EndFrame();
  observer_->EndFrame(done_);
  ++done_;
}

bool GameRun::PlayToTheEnd() {
  const int start = done_;
  while (!match_.IsAtPodium() && GetPlatform().running) {
    if (done_ - start == kMostFrames) {
      std::fprintf(stderr, "the match did not end in %d frames\n", kMostFrames);
      return false;
    }
    RunFrame();
  }
  return true;
}

bool GameRun::PlayMatches() {
  for (int i = 0; i < options_.matches && GetPlatform().running; ++i) {
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
  if (!options_.digest) return;
  std::fprintf(out_, "digest %016" PRIX64 "\n", StateDigest());
  std::fflush(out_);
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
  GetEditor().Shutdown();
}
