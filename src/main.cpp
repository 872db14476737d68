#include <filesystem>
#include <memory>
#include <system_error>

#include "audio/audio.h"
#include "build_world.h"
#include "core/system.h"
#include "editor/editor.h"
#include "frame.h"
#include "game_events.h"
#include "graphics/background.h"
#include "graphics/renderer.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "screens/logo_screen_script.h"

namespace {

constexpr unsigned kFramesPerSecond = 60;

// All data stands beside the program, wherever it is started from.
void EnterOwnFolder() {
  const std::unique_ptr<char, decltype(&SDL_free)> folder(SDL_GetBasePath(), SDL_free);
  std::error_code error;
  if (folder) std::filesystem::current_path(folder.get(), error);
}

}  // namespace

int main(int, char*[]) {
  Audio::SilenceLibraries();
  EnterOwnFolder();
  System system;
  SetPlatform(system);
  BuildWorld();
  system.targetFps = kFramesPerSecond;
  system.Init(gl::Load);
  Input::ReopenGamepads();
  Input::GetPointer().window = system.GetWindowRect();
  GetEditor().Init();
  GetEditor().StartRecovery();
  Audio::Init(Audio::Output::kDevice);
  BindKeys();
  GetRenderer().Init();
  CreateLogoScreen();
  GetBackground();
  GameEvents events;
  Frame frame(events);
  while (system.running) frame.Run();
  AbandonStartUp();
  Audio::Shutdown();
  GetEditor().Shutdown();
  GetRenderer().Shutdown();
  gl::Unload();
  system.Shutdown();
  return 0;
}
