// What reading a level file into live objects costs: from opening the file to finished components. Takes no arguments
// and works in a temporary folder of its own. Prints a tab-separated row for each size: engine, objects; microseconds a
// load (median, 10th and 90th percentile), median an object; file bytes over the median in MB/s, twice, since this
// format is its own text form; size of the file in MB.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/png_writer.h"
#include "bench/work_folder.h"
#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "startup.h"

namespace {

namespace fs = std::filesystem;

constexpr char kPicture[] = "tile.png";

// Builds the text of one level line by line.
class LevelText {
 public:
  void AddObject(int number) {
    Open(std::to_string(number + 1) + ":");
    Line("Name: Object" + std::to_string(number));
    Line("Core: false");
    AddTransform();
    OpenComponent("ScriptBox");
    Close();
    AddSprite();
    AddCollider();
    Close();
  }
  std::string Finish() && { return text_ + "}\n"; }

 private:
  void Line(const std::string& line) { text_ += std::string(depth_, '\t') + line + '\n'; }
  void Open(const std::string& head) {
    Line(head + " {");
    ++depth_;
  }
  void OpenComponent(const std::string& name) { Open("Component: \"" + name + "\""); }
  void Close() {
    --depth_;
    Line("}");
  }
  void Value(const std::string& key) { Line(key + ": " + DrawNumber()); }
  void Vector() {
    OpenComponent("Vec3");
    for (const char* key : {"x_", "y_", "z_"}) Value(key);
    Close();
  }

  void AddTransform() {
    OpenComponent("Transform");
    Vector();
    OpenComponent("Vec3");
    for (const char* line : {"r_: 1", "i_: 0", "j_: 0", "k_: 0"}) Line(line);
    Close();
    OpenComponent("Matrix34");
    for (const char* line : {": 1", ": 0", ": 0", ": 0", ": 1", ": 0", ": 0", ": 0", ": 1"}) Line(line);
    Vector();
    Close();
    Vector();
    Close();
  }

  void AddSprite() {
    OpenComponent("Sprite");
    for (const char* line : {"row: 1", "columns: 1", "start frame: 0", "end frame: 0"}) Line(line);
    for (const char* key : {"r", "g", "b", "a"}) Value(key);
    for (const char* line : {"mesh type: 0", "visibility: true", "shader name: default"}) Line(line);
    Line(std::string("texture path: ") + kPicture);
    Close();
  }

  void AddCollider() {
    OpenComponent("BoxCollider");
    for (const char* line : {"size: 1.13137", "type: 0", "restitution: 1", "ghost: false", "collision group: 1"})
      Line(line);
    Vector();
    Close();
  }

  // Levels hold many noughts and ones; the rest has up to six digits.
  std::string DrawNumber() {
    state_ = state_ * 1664525u + 1013904223u;
    const std::uint32_t kind = state_ >> 28;
    if (kind < 4) return "0";
    if (kind < 6) return "1";
    std::array<char, 32> digits = {};
    std::snprintf(digits.data(), digits.size(), "%g", (state_ & 0xFFFFF) / 16384.0 - 32.0);
    return digits.data();
  }

  std::string text_ = "{\n";
  std::size_t depth_ = 1;
  std::uint32_t state_ = 7;
};

std::string MakeLevel(int objects) {
  LevelText text;
  for (int i = 0; i < objects; ++i) text.AddObject(i);
  return std::move(text).Finish();
}

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
  const std::string text = MakeLevel(objects);
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

int main() {
  SetPrintTarget(stderr);
  const bench::WorkFolder folder("level_load");
  fs::create_directory("Texture");
  bench::WritePng(fs::path("Texture") / kPicture, 4, 4, bench::Bytes(4 * 4 * 4, 0x80));
  BuildWorld();
  const bool complete = MeasureRow(100, 300) && MeasureRow(1000, 60) && MeasureRow(10000, 15);
  Objects().Reset();
  return complete ? 0 : 1;
}
