// What a frame costs that the renderer draws: background (b), turning sprites (s), 300 particles (p), five lines of
// text (t) and the ripple of the screen pass (r). Needs an X display of 1280 x 720 and stands beside the program's own
// Graphics folder.
//
// Environment: SPRITES (60), PARTS (bsptr; letters of parts that it cannot draw are left out), FRAMES (300) after WARM
// (60), ASSETS (folder of bg.rgba, 1280 x 720, sprite0.rgba to sprite9.rgba, 64 x 64, and dot.rgba, 16 x 16, raw RGBA
// with the top row first), FONT (a TrueType file; without it there is no text), START (seconds since the epoch at which
// the process was started; what the pictures' conversion takes does not count), SHOT (where to write the first measured
// frame as PPM).
//
// Prints one tab-separated row: program, parts, sprites; ms a frame (median, 10th and 90th percentile); processor ms a
// frame, all threads; frames a second; draw calls a frame; peak memory in MB; ms from START to the first frame shown.
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "bench/png_writer.h"
#include "bench/work_folder.h"
#include "build_world.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/script_box.h"
#include "core/system.h"
#include "core/transform.h"
#include "graphics/background.h"
#include "graphics/basic_particle_emitter.h"
#include "graphics/camera.h"
#include "graphics/renderer.h"
#include "graphics/sprite.h"
#include "graphics/sprite_text.h"

namespace {

namespace fs = std::filesystem;
using bench::Bytes;

constexpr int kWidth = 1280;
constexpr int kHeight = 720;
constexpr int kSpriteSize = 64;  // pixels
constexpr int kPictures = 10;
constexpr float kFrameTime = 1.0f / 60.0f;  // seconds by which the pictures turn
constexpr int kRippleFrames = 60;           // between restarts of the ripple
constexpr int kDots = 300;
constexpr int kDotSize = 16;  // pixels
constexpr char kFont[] = "font.ttf";
constexpr std::array<const char*, 5> kLines = {"SCORE 012345", "SCORE 543210", "SCORE 678901", "SCORE 109876",
                                               "SCORE 246802"};

std::string Setting(const char* name, const char* fallback) {
  const char* value = std::getenv(name);
  return value == nullptr ? fallback : value;
}

struct Settings {
  int sprites = std::max(0, std::atoi(Setting("SPRITES", "60").c_str()));
  int frames = std::max(1, std::atoi(Setting("FRAMES", "300").c_str()));
  int warm = std::max(1, std::atoi(Setting("WARM", "60").c_str()));
  std::string parts;
  fs::path assets = fs::absolute(Setting("ASSETS", "."));
  std::string font = Setting("FONT", "");
  std::string shot = Setting("SHOT", "");
  double start = std::atof(Setting("START", "0").c_str());

  Settings() {
    for (const char letter : Setting("PARTS", "bsptr"))
      if (std::string_view(font.empty() ? "bsprxn" : "bsptrxn").find(letter) != std::string_view::npos) parts += letter;
    if (!shot.empty()) shot = fs::absolute(shot).string();
  }
  bool Has(char part) const { return parts.find(part) != std::string::npos; }
};

std::string PictureName(int index) { return "sprite" + std::to_string(index) + ".png"; }

bool ConvertPicture(const fs::path& raw, const std::string& name, int width, int height) {
  std::ifstream file(raw, std::ios::binary);
  Bytes pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
  file.read(reinterpret_cast<char*>(pixels.data()), static_cast<std::streamsize>(pixels.size()));
  if (static_cast<std::size_t>(file.gcount()) != pixels.size()) {
    std::fprintf(stderr, "%s: missing or too short\n", raw.c_str());
    return false;
  }
  bench::WritePng(fs::path("Texture") / name, width, height, pixels);
  return true;
}

// The engine reads pictures and shaders from the working folder.
bool LayOutFolder(const Settings& settings, const fs::path& graphics) {
  const fs::path& assets = settings.assets;
  fs::create_directories("Texture/Fonts");
  fs::create_directory_symlink(graphics, "Graphics");
  if (!settings.font.empty()) fs::create_symlink(settings.font, fs::path("Texture/Fonts") / kFont);
  bool complete = ConvertPicture(assets / "bg.rgba", "bg.png", kWidth, kHeight) &&
                  ConvertPicture(assets / "dot.rgba", "dot.png", kDotSize, kDotSize);
  for (int i = 0; i < kPictures && complete; ++i)
    complete =
        ConvertPicture(assets / ("sprite" + std::to_string(i) + ".rgba"), PictureName(i), kSpriteSize, kSpriteSize);
  return complete;
}

class QuitWatch final : public EventRouter {
 public:
  void BeginFrame() override {}
  void Route(const SDL_Event& event) override {
    if (event.type == SDL_QUIT) GetPlatform().running = false;
  }
  void EndFrame() override {}
};

class Stage {
 public:
  explicit Stage(const Settings& settings) : settings_(settings) {
    Renderer& renderer = GetRenderer();
    renderer.LoadTexture("bg.png");
    renderer.LoadTexture("dot.png");
    for (int i = 0; i < kPictures; ++i) renderer.LoadTexture(PictureName(i));
    SetBackgroundPicture("bg.png");
    renderer.SetScreenShader(settings.Has('r') ? "wave" : "screen");
    if (settings.Has('s'))
      for (int i = 0; i < settings.sprites; ++i) AddSprite(i);
    if (settings.Has('p')) AddDots();
    if (settings.Has('t')) AddLines();
    Objects().GetCamera().Update(kFrameTime);
  }

  void Draw(int frame) {
    Renderer& renderer = GetRenderer();
    for (std::size_t i = 0; i < sprites_.size(); ++i) Turn(*sprites_[i], static_cast<float>(i) * 0.37f, frame);
    renderer.BeginScene();
    if (settings_.Has('b')) renderer.DrawSprite(GetBackground());
    if (dots_ != nullptr) dots_->Update(kFrameTime);
    renderer.DrawParticles();
    for (const GameObject* sprite : sprites_) renderer.DrawSprite(*sprite);
    for (const GameObject* line : lines_) renderer.DrawText(*line);
    if (settings_.Has('n')) return;
    if (settings_.Has('r') && frame % kRippleFrames == 0) renderer.StartRipple({0.5f, 0.5f, 0.0f});
    renderer.ComposeScreen();
  }

  std::size_t CountCalls() const {
    return sprites_.size() + lines_.size() + ParticleEmitters().size() + (settings_.Has('b') ? 1 : 0) +
           (settings_.Has('n') ? 0 : 1);
  }

 private:
  // World units a pixel in the plane z = 0.
  static float UnitsPerPixel() {
    const Camera& camera = *GetMainCamera();
    const float distance = Objects().GetCamera().GetTransform().position.z;
    return 2.0f * distance * std::tan(camera.GetFov() * kPi / 360.0f) / kHeight;
  }

  void AddSprite(int index) {
    GameObject& object = *Objects().GetObject(Objects().CreateObject());
    const float unit = UnitsPerPixel();
    const int x = (index * 97 + 13) % kWidth;
    const int y = (index * 57 + 29) % kHeight;
    Transform& transform = object.GetTransform();
    transform.position = {static_cast<float>(x - kWidth / 2) * unit, static_cast<float>(kHeight / 2 - y) * unit, 0.0f};
    transform.graphicsScale = {kSpriteSize * unit, kSpriteSize * unit, 0.0f};
    object.Insert(std::make_unique<Sprite>()).texturePath = PictureName(index % kPictures);
    sprites_.push_back(&object);
  }

  // One is laid an update; they drift and never die.
  void AddDots() {
    GameObject& object = *Objects().GetObject(Objects().CreateObject());
    const float unit = UnitsPerPixel();
    auto& box = object.Insert(std::make_unique<ScriptBox>());
    auto& dots = static_cast<BasicParticleEmitter&>(box.AddScript(std::make_unique<BasicParticleEmitter>()));
    dots.textureName = "dot.png";
    dots.maxParticles = kDots;
    dots.colour = {1.0f, 0.9f, 0.5f};
    dots.startingPositionMax = {unit * kWidth / 2, unit * kHeight / 2, 0.0f};
    dots.startingPositionMin = dots.startingPositionMax * -1.0f;
    dots.maxVelocity = {20.0f * unit, 20.0f * unit, 0.0f};
    dots.minVelocity = dots.maxVelocity * -1.0f;
    dots.minAcceleration = dots.maxAcceleration = {};
    dots.minScale.x = dots.maxScale.x = kDotSize * unit;
    dots.minLifespan = dots.maxLifeSpan = 1e6f;
    dots.spawnIntervalMin = dots.spawnIntervalMax = 0.0f;
    while (dots.CountLive() < kDots) dots.Update(kFrameTime);
    dots.spawnIntervalMin = dots.spawnIntervalMax = 1e6f;
    dots.Update(kFrameTime);
    dots_ = &dots;
  }

  void AddLines() {
    GetRenderer().LoadFont(kFont);
    const float unit = UnitsPerPixel();
    for (std::size_t i = 0; i < kLines.size(); ++i) {
      GameObject& object = *Objects().GetObject(Objects().CreateObject());
      const auto row = static_cast<float>(i);
      object.GetTransform().position = {(40.0f * row - 200.0f) * unit, (250.0f - 130.0f * row) * unit, 0.0f};
      object.GetTransform().Rebuild();
      auto& line = object.Insert(std::make_unique<SpriteText>());
      line.SetText(kLines[i]);
      line.SetScale({unit, unit, 1.0f});
      line.fontName = kFont;
      line.r = line.g = line.b = 1.0f;
      lines_.push_back(&object);
    }
  }

  static void Turn(GameObject& object, float offset, int frame) {
    Transform& transform = object.GetTransform();
    transform.orientation = QuaternionFromZ(-(offset + static_cast<float>(frame) * kFrameTime));
    transform.Rebuild();
  }

  const Settings& settings_;
  std::vector<GameObject*> sprites_;
  std::vector<GameObject*> lines_;
  BasicParticleEmitter* dots_ = nullptr;
};

double ClockMs(clockid_t clock) {
  timespec time = {};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

void WriteShot(const std::string& path) {
  Bytes pixels(static_cast<std::size_t>(kWidth) * kHeight * 3);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, kWidth, kHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
  std::ofstream file(path, std::ios::binary);
  file << "P6\n" << kWidth << ' ' << kHeight << "\n255\n";
  constexpr std::size_t kRow = kWidth * 3;
  for (std::size_t row = kHeight; row-- > 0;)
    file.write(reinterpret_cast<const char*>(pixels.data() + row * kRow), static_cast<std::streamsize>(kRow));
}

struct Timing {
  std::vector<double> frames;  // ms
  double total = 0.0;          // ms
  double processor = 0.0;      // ms, all threads
  double first = 0.0;          // ms since the epoch when the first frame stood
};

Timing RunFrames(Stage& stage, const Settings& settings) {
  QuitWatch events;
  Timing timing;
  Platform& platform = GetPlatform();
  double last = ClockMs(CLOCK_MONOTONIC);
  double processorStart = 0.0;
  for (int frame = 0; frame < settings.warm + settings.frames && platform.running; ++frame) {
    platform.PumpEvents(events);
    stage.Draw(frame);
    if (frame == settings.warm && !settings.shot.empty()) WriteShot(settings.shot);
    platform.Present();
    if (frame == 0) timing.first = ClockMs(CLOCK_REALTIME);
    const double now = ClockMs(CLOCK_MONOTONIC);
    if (frame >= settings.warm) timing.frames.push_back(now - last);
    if (frame == settings.warm - 1) processorStart = ClockMs(CLOCK_PROCESS_CPUTIME_ID);
    last = now;
  }
  timing.processor = ClockMs(CLOCK_PROCESS_CPUTIME_ID) - processorStart;
  for (const double time : timing.frames) timing.total += time;
  std::sort(timing.frames.begin(), timing.frames.end());
  return timing;
}

void PrintRow(const Settings& settings, const Timing& timing, std::size_t calls) {
  const std::vector<double>& times = timing.frames;
  const auto count = static_cast<double>(times.size());
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("brinewhirl\t%s\t%d\t%.2f\t%.2f\t%.2f\t%.3f\t%.1f\t%zu\t%.0f\t%.0f\n", settings.parts.c_str(),
              settings.sprites, times[times.size() / 2], times[times.size() / 10], times[times.size() * 9 / 10],
              timing.processor / count, 1000.0 * count / timing.total, calls,
              static_cast<double>(usage.ru_maxrss) / 1024.0, timing.first - settings.start * 1000.0);
}

int Measure(const Settings& settings) {
  System system;
  SetPlatform(system);
  BuildWorld();
  system.startsFullscreen = false;  // like the other programs; a full screen waits for the window manager's answer
  system.Init(gl::Load);
  if (!gl::HasContext()) {
    std::fprintf(stderr, "no OpenGL context\n");
    return 1;
  }
  SDL_GL_SetSwapInterval(0);
  GetRenderer().Init();
  Stage stage(settings);
  const Timing timing = RunFrames(stage, settings);
  if (!timing.frames.empty()) PrintRow(settings, timing, stage.CountCalls());
  Objects().Reset();
  GetRenderer().Shutdown();
  gl::Unload();
  system.Shutdown();
  return timing.frames.empty() ? 1 : 0;
}

}  // namespace

int main() {
  SetPrintTarget(stderr);
  Settings settings;
  std::error_code error;
  const fs::path graphics = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path() / "Graphics";
  const bench::WorkFolder folder("frame");
  const double begun = ClockMs(CLOCK_MONOTONIC);
  if (!LayOutFolder(settings, graphics)) return 1;
  settings.start += (ClockMs(CLOCK_MONOTONIC) - begun) / 1e3;
  return Measure(settings);
}
