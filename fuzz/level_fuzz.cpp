// libFuzzer target: any bytes as a level file. The level is read, lives for two frames and is saved; whatever it holds,
// the program must neither crash nor hang nor ask for memory out of proportion.
//
//   level_fuzz -max_len=16384 -timeout=20 -rss_limit_mb=1024 CORPUS_FOLDER...
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "absolute_arguments.h"
#include "build_world.h"
#include "core/file_cache.h"
#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/print.h"
#include "core/random.h"
#include "physics/generator_host.h"
#include "physics/slow_motion.h"
#include "physics/step.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxInput = 64 * 1024;
constexpr int kFrames = 2;
constexpr char kLevel[] = "fuzzlevel";
constexpr char kSaved[] = "fuzzsaved";

// The working folder of the process, in memory where there is such a place; removed at exit.
class WorkFolder {
 public:
  WorkFolder() {
    const fs::path parent = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
    std::string pattern = (parent / "level_fuzz.XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
      std::perror(pattern.c_str());
      std::exit(1);
    }
    path_ = pattern;
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  const fs::path& GetPath() const { return path_; }

 private:
  fs::path path_;
};

const WorkFolder& Folder() {
  static const WorkFolder folder;
  return folder;
}

// The running frame of the game, without window, camera and picture.
void RunFrame() {
  GameTime& time = Time();
  time.physicsStep = time.frameStep * kPhysicsShare;
  const auto& objects = Objects().GetObjects();
  for (std::size_t i = 0; i < objects.size(); ++i) objects[i]->Update(time.frameStep);
  Objects().RemoveDeadObjects();
  time.elapsedTime += time.frameStep;
  GalePhysics::RunSubSteps();
  Objects().SortIfNeeded();
}

// Destructors may load levels, so one sweep need not be enough.
void ClearWorld() {
  while (!Objects().GetObjects().empty()) {
    Objects().KillAll();
    Objects().RemoveDeadObjects();
  }
  StopSlowMotion();
  GalePhysics::ResetGeneratorHost();
  ClearPauseReasons();
  ClearFileCache();
  SeedRandom(10);
  Time() = GameTime{};
}

}  // namespace

// The game reads plain names of its working folder, so the program moves there.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
  MakeArgumentsAbsolute(argc, argv);
  fs::current_path(Folder().GetPath());
  SetPrintTarget(std::fopen("/dev/null", "w"));
  BuildWorld();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > kMaxInput) return 0;
  std::ofstream(kLevel, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  ClearWorld();
  Objects().LoadLevel(kLevel);
  for (int frame = 0; frame < kFrames; ++frame) RunFrame();
  Objects().SaveLevel(kSaved);
  ClearWorld();
  return 0;
}
