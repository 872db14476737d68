// The program in a browser. The page calls it with words of its own:
//   (none)                     the game, whose player is recorded to kRecording
//   play FILE FRAMES           an input file in the window; FRAMES of it, 0 for all
//   simulate FILE FRAMES       a match from it without a window, as fast as may be; its digest is printed
// A window's frames run whenever the browser draws one.
#include <emscripten.h>
#include <emscripten/html5.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

#include "core/system.h"
#include "editor/editor.h"
#include "graphics/renderer.h"
#include "screens/options.h"
#include "tools/record/live_platform.h"
#include "tools/simulate/simulate.h"

namespace {

constexpr char kDataFolder[] = "/game";                 // where the page puts what ships
constexpr char kRecording[] = "/game/recording.input";  // of this visit
constexpr double kFrameTime = 1000.0 / kFramesASecond;  // milliseconds
constexpr double kJitter = 2.0;  // milliseconds by which a display of 60 frames a second may be early

// Shows a run that hears nothing of its window but the size.
class ShownRun final : public WindowPlatform, private EventRouter {
 public:
  using WindowPlatform::WindowPlatform;
  void PumpEvents(EventRouter& router) override {
    window_.PumpEvents(*this);
    given_.PumpEvents(router);
    FitPicture();
  }
  void FitPicture() {
    const WindowRect rect = window_.GetWindowRect();
    if (rect.width == shown_.width && rect.height == shown_.height) return;
    GetRenderer().FitPicture(rect.width, rect.height);
    shown_ = rect;
  }

 private:
  void BeginFrame() override {}
  void EndFrame() override {}
  void Route(const SDL_Event&) override {}

  WindowRect shown_ = {0, 0, 0, 0};
};

class Page {
 public:
  Page(const RunOptions& options, InputScript input)
      : options_(options), game_(options_, std::move(input), stdout, nullptr) {}

  void Start();
  void RunIfDue();

 private:
  void End();

  RunOptions options_;
  System system_;
  GameRun game_;
  Recorder recorder_;
  std::unique_ptr<Platform> platform_;
  RunObserver nobody_;
  double nextFrame_ = 0.0;  // milliseconds of the browser's clock
};

// A browser leaves the whole screen by itself, too.
EM_BOOL HearFullscreen(int /*type*/, const EmscriptenFullscreenChangeEvent* event, void* /*user*/) {
  if (event->isFullscreen == EM_FALSE && GetOptions().menuFullscreen) {
    GetOptions().menuFullscreen = false;
    GetPlatform().SetFullscreen(false);
  }
  return EM_FALSE;
}

void Page::Start() {
  system_.startsFullscreen = false;
  SDL_SetHint(SDL_HINT_EMSCRIPTEN_KEYBOARD_ELEMENT, "#canvas");
  system_.Init(gl::Load);
  if (options_.live) {
    if (const std::string error = recorder_.Open(kRecording); !error.empty()) FailFile(kRecording, error);
    platform_ = std::make_unique<LivePlatform>(system_, game_.GetGiven(), recorder_);
    GetOptions().menuFullscreen = false;  // a recording shows what the desktop would
    emscripten_set_fullscreenchange_callback(EMSCRIPTEN_EVENT_TARGET_DOCUMENT, nullptr, EM_FALSE, HearFullscreen);
  } else {
    platform_ = std::make_unique<ShownRun>(system_, game_.GetGiven());
  }
  game_.Start(Audio::Output::kDevice, platform_.get());
  if (options_.live) GetEditor().StartRecovery();
}

// Displays that are faster would have the game run faster.
void Page::RunIfDue() {
  const double now = emscripten_get_now();
  if (now < nextFrame_ - kJitter) return;
  nextFrame_ = std::max(nextFrame_, now - kFrameTime) + kFrameTime;
  if (!game_.Step(nobody_)) End();
}

void Page::End() {
  emscripten_cancel_main_loop();
  recorder_.Finish(game_.GetFrames());
  game_.PrintDigest();
  GameRun::Shutdown();
  GetEditor().Shutdown();
  EM_ASM({ Module.onGameEnd(); });
}

int Run(RunOptions options) {
  InputScript input;
  if (const int result = ReadInput(options, input); result != 0) return result;
  if (const int result = EnterDataFolder(options, {}); result != 0) return result;
  static std::unique_ptr<Page> page;
  // Before the window: its swap interval wants a loop to hold to.
  emscripten_set_main_loop([] { page->RunIfDue(); }, 0, EM_FALSE);
  page = std::make_unique<Page>(options, std::move(input));
  page->Start();
  return 0;
}

}  // namespace

int main(int argc, char* argv[]) {
  const std::string_view command = argc > 1 ? argv[1] : "";
  SimulateOptions options;
  options.dataFolder = kDataFolder;
  options.digest = true;
  options.frames = std::numeric_limits<int>::max();
  if (command.empty()) {
    options.boot = options.live = true;
    return Run(options);
  }
  if (argc != 4) return kWrongUsage;
  options.inputFile = argv[2];
  options.frames = std::atoi(argv[3]);
  if (command == "play") {
    options.boot = true;
    if (options.frames == 0) options.frames = -1;
    return Run(options);
  }
  options.match = true;
  if (options.frames == 0) options.untilEnd = options.pilots = true;
  return Simulate(options);
}
