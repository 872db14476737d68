#include "core/system.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/print.h"
#include "core/random.h"
#include "core/system_pad.h"

namespace {
constexpr char kTitle[] = "Brinewhirl";
}  // namespace

System::System() = default;
System::~System() = default;

void System::Init(GlLoader loadGl) {
  SDL_Init(SDL_INIT_VIDEO);
  SDL_Init(SDL_INIT_JOYSTICK);
  SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER);  // its device events come only when it is started
  PrintDisplayMode();
  OpenWindow(loadGl);
  // After the context exists these ask for nothing any more, and must not: the atlas of the text needs a compatibility
  // context, which is what a plain request gives.
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_CORE);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 3);
  SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
  SDL_JoystickEventState(SDL_ENABLE);
  SDL_ShowCursor(0);
  SeedRandom(kFirstSeed);
}

// Asks for the second display; with one display the query fails and zeros are printed.
void System::PrintDisplayMode() const {
  SDL_DisplayMode mode{};
  if (SDL_GetDesktopDisplayMode(1, &mode) != 0) {
    SDL_Log("SDL_GetDesktopDisplayMode failed: %s", SDL_GetError());
    mode = {};
  }
  Print("Height: %d\n", mode.h);
  Print("Width: %d\n", mode.w);
  Print("Refresh Rate: %d\n", mode.refresh_rate);
}

void System::OpenWindow(GlLoader loadGl) {
  const WindowRect request;
  const SDL_Rect rect = {SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, request.width, request.height};
  const auto look = startsFullscreen ? Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP} : Uint32{SDL_WINDOW_RESIZABLE};
  window_.Open(kTitle, rect, look, loadGl);
  fullscreen_ = startsFullscreen;
  vsync_ = false;
  ToggleVSync();
  if (window_.Get() == nullptr) {
    Print("Window could not be created SDL Error: %s\n", window_.GetError().c_str());
    return;
  }
  const GlReport& report = window_.GetReport();
  const char* error = window_.HasContext() ? report.error : window_.GetError().c_str();
  if (error != nullptr) Print("Error initializing GLEW.\n%s\n", error);
  if (!report.context.empty())
    Print(report.canDraw ? "Drawing with %s\n" : "%s is too old: the shaders need GLSL 3.30 or OpenGL ES 3.0\n",
          report.context.c_str());
}

void System::Shutdown() {
  for (auto& pad : pads_) pad.reset();
  window_.Close();
  SDL_Quit();
}

bool System::ToggleVSync() {
  vsync_ = !vsync_;
  if (vsync_ && SDL_GL_SetSwapInterval(1) < 0) Print("Unable to set VSync, SDL:ERROR:%s\n", SDL_GetError());
  return vsync_;
}

void System::PumpEvents(EventRouter& router) {
  router.BeginFrame();
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) router.Route(event);
  router.EndFrame();
}

WindowRect System::GetWindowRect() const {
  WindowRect rect;
  if (window_.Get() == nullptr) return rect;
  SDL_GetWindowPosition(window_.Get(), &rect.x, &rect.y);
  SDL_GetWindowSize(window_.Get(), &rect.width, &rect.height);
  return rect;
}

void System::SetFullscreen(bool fullscreen) {
  if (window_.Get() != nullptr)
    SDL_SetWindowFullscreen(window_.Get(), fullscreen ? Uint32{SDL_WINDOW_FULLSCREEN_DESKTOP} : Uint32{0});
  fullscreen_ = fullscreen;
}

void System::Minimise() {
  if (window_.Get() != nullptr) SDL_MinimizeWindow(window_.Get());
}

void System::ShowPointer(bool shown) { SDL_ShowCursor(shown ? SDL_ENABLE : SDL_DISABLE); }

std::string System::GetClipboard() {
  const std::unique_ptr<char, decltype(&SDL_free)> text(SDL_GetClipboardText(), SDL_free);
  return text == nullptr ? std::string{} : std::string(text.get());
}

void System::SetClipboard(const std::string& text) {
  if (SDL_SetClipboardText(text.c_str()) != 0) Print("nothing is copied: %s\n", SDL_GetError());
}

void System::Present() {
  if (window_.HasContext()) SDL_GL_SwapWindow(window_.Get());
}

int System::GetJoystickCount() const { return std::max(0, SDL_NumJoysticks()); }

// A device that is closed loses what is held on it until its next report, so one that stays or moves to another slot is
// never closed in between: the new handle of a slot is made before its old one goes.
void System::OpenGamepad(int slot) {
  auto& pad = pads_[static_cast<std::size_t>(slot)];
  const bool isThere = slot < GetJoystickCount();
  if (isThere && pad && pad->IsDevice(slot)) return;
  auto opened = isThere ? std::make_unique<SystemPad>(slot) : nullptr;
  pad = opened && opened->IsOpen() ? std::move(opened) : nullptr;
}

bool System::IsGamepadConnected(int slot) const { return pads_[static_cast<std::size_t>(slot)] != nullptr; }

bool System::GetGamepadButton(int slot, int button) const {
  const auto& pad = pads_[static_cast<std::size_t>(slot)];
  return pad && pad->GetButton(button);
}

std::int16_t System::GetGamepadAxis(int slot, int axis) const {
  const auto& pad = pads_[static_cast<std::size_t>(slot)];
  return pad ? pad->GetAxis(axis) : std::int16_t{0};
}

void System::StartFrame() { frameStartTicks_ = SDL_GetTicks(); }

std::uint32_t FrameRest(std::uint32_t frameTime, unsigned targetFps) {
  if (targetFps == 0) return 0;
  const float budget = 1000.0f / static_cast<float>(targetFps);
  // Compared as floats before the unsigned subtraction, which must not wrap.
  return budget > static_cast<float>(frameTime) ? static_cast<std::uint32_t>(budget) - frameTime : 0;
}

void System::EndFrame() {
  frameEndTicks_ = SDL_GetTicks();
  frameTime_ = frameEndTicks_ - frameStartTicks_;
  if (frameTime_ != 0) measuredFps = 1000 / frameTime_;
  SDL_Delay(FrameRest(frameTime_, targetFps));
  frameEndTicks_ = SDL_GetTicks();
  frameTime_ = frameEndTicks_ - frameStartTicks_;
}
