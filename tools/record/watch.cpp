#include "tools/record/watch.h"

#include <SDL.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "graphics/renderer.h"
#include "tools/record/game_window.h"
#include "tools/record/window_platform.h"
#include "tools/simulate/data_folder.h"

namespace {

constexpr int kJump = 10 * kFramesASecond;
constexpr int kFrameTime = 1000 / kFramesASecond;  // milliseconds
constexpr int kFastest = 4;                        // a doubling each
constexpr int kSlowest = -4;

// Shows the run or not; what happens in the window goes to whoever watches.
class ShownRun final : public WindowPlatform {
 public:
  using WindowPlatform::WindowPlatform;
  void PumpEvents(EventRouter& router) override { given_.PumpEvents(router); }
  void Present() override {
    if (shown) window_.Present();
  }
  void EndFrame() override {
    if (shown) window_.EndFrame();
  }

  bool shown = true;
};

class Viewer final : public RunObserver, private EventRouter {
 public:
  Viewer(System& window, ShownRun& run, int from, bool paused)
      : window_(window), run_(run), showFrom_(from), paused_(paused) {}

  void BeginFrame(int frame) override {
    frame_ = frame;
    HearWindow();
    while (paused_ && IsRunning() && frame > showFrom_) Wait();  // the frame that a jump leads to is drawn first
    const bool jumping = frame < showFrom_;
    if (jumping != jumping_) Audio::HoldOutput(jumping_ = jumping);
    run_.shown = !jumping && (speed_ <= 0 || frame == showFrom_ || frame % (1 << speed_) == 0);
    GetRenderer().SetDrawing(run_.shown);
  }

  void EndFrame(int /*frame*/) override {
    for (int i = 1; i < 1 << std::max(0, -speed_) && IsRunning() && run_.shown; ++i) Wait();
  }

  /// Until the viewer leaves or wants to see something again.
  void StayAtTheEnd() {
    std::fprintf(stderr, "the recording ends here, at frame %d\n", frame_ + 1);
    while (IsRunning()) Wait();
  }

  /// The frame to begin anew from; below 0: none.
  int GetNextFrom() const { return nextFrom_; }
  bool IsPaused() const { return paused_; }

 private:
  bool IsRunning() const { return run_.running; }

  void HearWindow() {
    window_.PumpEvents(*this);
    if (!window_.running) run_.running = false;
  }

  void Wait() {
    SDL_Delay(kFrameTime);
    HearWindow();
  }

  void BeginFrame() override {}
  void EndFrame() override {}
  void Route(const SDL_Event& event) override {
    if (event.type == SDL_QUIT) run_.running = false;
    if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)
      GetRenderer().FitPicture(event.window.data1, event.window.data2);
    if (event.type == SDL_KEYDOWN) HearKey(event.key.keysym.sym);
  }

  void HearKey(int key) {
    switch (key) {
      case SDLK_ESCAPE:
        run_.running = false;
        break;
      case SDLK_SPACE:
        paused_ = !paused_;
        std::fprintf(stderr, "%s at frame %d\n", paused_ ? "stands" : "goes on", frame_);
        break;
      case SDLK_PLUS:
      case SDLK_EQUALS:
      case SDLK_KP_PLUS:
        ChangeSpeed(1);
        break;
      case SDLK_MINUS:
      case SDLK_KP_MINUS:
        ChangeSpeed(-1);
        break;
      case SDLK_RIGHT:
        showFrom_ = std::max(showFrom_, frame_ + kJump);
        break;
      case SDLK_LEFT:
        nextFrom_ = std::max(0, frame_ - kJump);
        run_.running = false;
        break;
      default:
        break;
    }
  }

  void ChangeSpeed(int by) {
    speed_ = std::clamp(speed_ + by, kSlowest, kFastest);
    std::fprintf(stderr, speed_ < 0 ? "1/%d of the speed\n" : "%d times the speed\n", 1 << std::abs(speed_));
  }

  System& window_;
  ShownRun& run_;
  int frame_ = 0;
  int showFrom_;
  int nextFrom_ = -1;
  int speed_ = 0;  // a power of two
  bool paused_;
  bool jumping_ = false;
};

// The state of a run cannot be taken back, so an earlier frame is reached by a process that begins again.
int BeginAgain(const WatchOptions& options, int from, bool paused) {
  LeaveOverlay();
  const std::string frame = std::to_string(from);
  std::vector<const char*> words = {"brinewhirl-tool", "watch", options.inputFile.c_str(), "--from", frame.c_str()};
  if (paused) words.push_back("--paused");
  if (!options.dataFolder.empty()) words.insert(words.end(), {"--data", options.dataFolder.c_str()});
  words.push_back(nullptr);
  ::execv("/proc/self/exe", const_cast<char* const*>(words.data()));
  return FailFile(options.inputFile, "cannot be begun again");
}

}  // namespace

int Watch(WatchOptions options) {
  Audio::SilenceLibraries();
  InputScript input;
  if (const int result = ReadInput(options, input); result != 0) return result;
  if (!input.IsRecording()) return FailFile(options.inputFile, "is no recording");
  if (const int result = EnterDataFolder(options, input); result != 0) return result;
  int result = 0;
  int nextFrom = -1;
  bool paused = false;
  {
    GameWindow window;
    GameRun game(options, std::move(input), stdout, nullptr);
    ShownRun shown(window.GetSystem(), game.GetGiven());
    game.Start(Audio::Output::kDevice, &shown);
    const WindowRect rect = window.GetSystem().GetWindowRect();
    GetRenderer().FitPicture(rect.width, rect.height);
    Viewer viewer(window.GetSystem(), shown, std::min(options.from, options.frames - 1), options.paused);
    result = game.Go(viewer);
    game.PrintDigest();
    if (shown.running) viewer.StayAtTheEnd();
    nextFrom = viewer.GetNextFrom();
    paused = viewer.IsPaused();
  }
  return nextFrom < 0 ? result : BeginAgain(options, nextFrom, paused);
}
