// libFuzzer target: any bytes as a recording, which the game plays from its first screen on. What cannot be read must
// be told with the number of its line; what can be read must neither crash nor hang. Runs from the data beside the
// program.
//
//   recording_fuzz -max_len=16384 -timeout=60 -rss_limit_mb=1024 CORPUS_FOLDER...
#include <SDL.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "absolute_arguments.h"
#include "core/print.h"
#include "tools/simulate/data_folder.h"
#include "tools/simulate/run.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max);

namespace {

constexpr int kFrames = 600;
constexpr unsigned kPatience = 40;  // seconds for one run

struct Player final : RunObserver {
  InputScript script;
  ScriptedPlatform* given = nullptr;
  void BeginFrame(int frame) override {
    std::string error;
    if (!script.Apply(frame, *given, error)) GetPlatform().running = false;
  }
};

RunOptions& Options() {
  static RunOptions options;
  return options;
}

GameRun& StartedRun() {
  static GameRun& run = *[] {
    Options().boot = Options().live = true;
    Options().frames = kFrames;
    // Its state cannot be taken back, so it is never destroyed.
    GameRun* started = std::make_unique<GameRun>(Options(), InputScript{}, stderr, nullptr).release();
    started->Start(Audio::Output::kNone);
    return started;
  }();
  return run;
}

// A run changes the whole process, so each has one of its own.
bool RunsWell(const InputScript& script) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::alarm(kPatience);
    Player player;
    player.script = script;
    player.given = &StartedRun().GetGiven();
    StartedRun().Go(player);
    ::_exit(0);
  }
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream all(text);
  for (std::string line; std::getline(all, line);) lines.push_back(line);
  return lines;
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

template <class Items>
const auto& Pick(const Items& items, std::minstd_rand& random) {
  return items[random() % items.size()];
}

// A line that could stand in a recording, or nearly.
std::string MakeLine(std::minstd_rand& random) {
  static const std::vector<std::string> kKeys = {"a",     "d",  "p",    "r",     "z",    "esc",
                                                 "enter", "f1", "ctrl", "shift", "ralt", "e"};
  static const std::vector<std::string> kLabels = {"Make default box",
                                                   "Make default object",
                                                   "Make segment manager",
                                                   "Make Assemblage",
                                                   "Make Core Level Stuff",
                                                   "Save Level",
                                                   "Load Level",
                                                   "Save Archetype",
                                                   "Load Archetype",
                                                   "Add Component",
                                                   "Add Script",
                                                   "Kill Selected Object",
                                                   "Undo",
                                                   "Redo"};
  static const std::vector<std::string> kFields = {
      "FileName", "ArchetypeName", "TextureName", "Level Duration", "Script Name", "Component Type To Add", "Find"};
  static const std::vector<std::string> kValues = {"crate",          "level1", "whaleroad", "CharacterController",
                                                   "SegmentManager", "1e38",   "-1",        "RigidBody",
                                                   "../x",           "",       "nan",       "3"};
  const auto number = [&](int most) { return std::to_string(static_cast<int>(random()) % (most + 1)); };
  const auto state = [&] { return random() % 2 == 0 ? " down" : " up"; };
  const std::string frame = number(kFrames) + " ";
  switch (random() % 9) {
    case 0:
      return frame + "key " + Pick(kKeys, random) + state();
    case 1:
      return frame + "pad " + number(3) + " axis " + number(5) + " " +
             std::to_string(static_cast<int>(random() % 65536) - 32768);
    case 2:
      return frame + "pad " + number(3) + (random() % 2 == 0 ? " connect" : " disconnect");
    case 3:
      return frame + "pad " + number(3) + " button " + number(15) + state();
    case 4:
      return frame + "mouse " + number(1280) + " " + number(720);
    case 5:
      return frame + "click left" + state();
    case 6:
      return frame + "window " + number(3000) + " " + number(3000);
    case 7:
      return frame + "bar \"options/" + Pick(kFields, random) + "\" = \"" + Pick(kValues, random) + '"' +
             (random() % 4 == 0 ? " held" : "");
    default:
      return frame + "bar \"options/" + Pick(kLabels, random) + '"';
  }
}

void MutateLines(std::vector<std::string>& lines, std::minstd_rand& random) {
  const auto place = [&] { return static_cast<std::ptrdiff_t>(random() % (lines.size() + 1)); };
  for (std::size_t i = random() % 8 + 1; i > 0; --i) {
    if (lines.empty() || random() % 2 == 0)
      lines.insert(lines.begin() + place(), MakeLine(random));
    else if (random() % 3 == 0)
      lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(random() % lines.size()));
    else if (random() % 2 == 0)
      lines.insert(lines.begin() + place(), std::string(Pick(lines, random)));
    else
      std::swap(lines[random() % lines.size()], lines[random() % lines.size()]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  MakeArgumentsAbsolute(argc, argv);
  SetPrintTarget(std::fopen("/dev/null", "w"));
  const std::unique_ptr<char, decltype(&SDL_free)> folder(SDL_GetBasePath(), SDL_free);
  std::filesystem::current_path(folder.get());
  if (!EnterOverlay().empty()) return 1;
  StartedRun();
  return 0;
}

// Mostly whole lines, which the game plays, rather than bytes, which it refuses.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max, unsigned seed) {
  std::minstd_rand random(seed);
  if (random() % 4 == 0) return LLVMFuzzerMutate(data, size, max);
  std::vector<std::string> lines = SplitLines({reinterpret_cast<const char*>(data), size});
  MutateLines(lines, random);
  const std::string text = JoinLines(lines).substr(0, max);
  std::copy(text.begin(), text.end(), data);
  return text.size();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  InputScript script;
  std::string error;
  if (!script.Parse({reinterpret_cast<const char*>(data), size}, error)) {
    if (!error.starts_with("line ")) __builtin_trap();
    return 0;
  }
  if (!RunsWell(script)) __builtin_trap();
  return 0;
}
