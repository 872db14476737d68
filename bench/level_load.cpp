// What reading a level file into live objects costs: from opening the file to finished components. Takes numbers of
// objects (default: 100 1000 10000) and works in a temporary folder of its own. Prints a tab-separated row for each
// size: engine, objects; microseconds a load (median, 10th and 90th percentile), median an object; file bytes over the
// median in MB/s, twice, since this format is its own text form; size of the file in MB.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/level_text.h"
#include "bench/png_writer.h"
#include "bench/work_folder.h"
#include "build_world.h"
#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/print.h"

namespace {

namespace fs = std::filesystem;

void ClearScene() {
  Objects().KillAll();
  Objects().RemoveDeadObjects();
  ClearFileCache();
}

bool IsComplete(const std::vector<GameObject*>& loaded, int objects) {
  return loaded.size() == static_cast<std::size_t>(objects) &&
         std::all_of(loaded.begin(), loaded.end(), [](const GameObject* object) {
           return object->GetComponent(Kind::kScriptBox) != nullptr && object->GetComponent(Kind::kSprite) != nullptr &&
                  object->GetComponent(Kind::kBoxCollider) != nullptr;
         });
}

bool MeasureRow(int objects, int repeats) {
  using Clock = std::chrono::steady_clock;
  const std::string fileName = "level" + std::to_string(objects);
  const std::string text = bench::MakeLevel(objects);
  std::ofstream(fileName, std::ios::binary) << text;

  std::vector<double> times;  // microseconds
  for (int i = 0; i <= repeats; ++i) {
    ClearScene();
    const auto start = Clock::now();
    const std::vector<GameObject*> loaded = Objects().LoadLevel(fileName);
    const double time = std::chrono::duration<double, std::micro>(Clock::now() - start).count();
    if (!IsComplete(loaded, objects)) {
      std::fprintf(stderr, "%s: not all of %d objects were made\n", fileName.c_str(), objects);
      return false;
    }
    if (i > 0) times.push_back(time);  // the first load warms up and reads the picture
  }
  ClearScene();

  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  const double megabytes = static_cast<double>(text.size()) / 1e6;
  const double speed = megabytes / median * 1e6;
  std::printf("brinewhirl\t%d\t%.0f\t%.0f\t%.0f\t%.3f\t%.1f\t%.1f\t%.3f\n", objects, median, times[times.size() / 10],
              times[times.size() * 9 / 10], median / objects, speed, speed, megabytes);
  std::fflush(stdout);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  SetPrintTarget(stderr);
  const bench::WorkFolder folder("level_load");
  fs::create_directory("Texture");
  bench::WritePng(fs::path("Texture") / bench::kPicture, 4, 4, bench::Bytes(4 * 4 * 4, 0x80));
  BuildWorld();
  std::vector<int> sizes = {100, 1000, 10000};
  if (argc > 1) {
    sizes.clear();
    std::transform(argv + 1, argv + argc, std::back_inserter(sizes), [](const char* text) { return std::atoi(text); });
  }
  const bool complete = std::all_of(sizes.begin(), sizes.end(), [](int objects) {
    return objects > 0 && MeasureRow(objects, std::clamp(30000 / objects, 15, 300));
  });
  Objects().Reset();
  return complete ? 0 : 1;
}
