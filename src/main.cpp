#include <string>

#include "audio/audio.h"
#include "build_world.h"
#include "command_line.h"
#include "core/data_place.h"
#include "core/print.h"
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

}  // namespace

int main(int count, char* arguments[]) {
  if (const auto answer = AnswerArguments(count, arguments)) return *answer;
  Audio::SilenceLibraries();
  // All data is found from the program, wherever it is started from.
  if (const std::string fault = EnterOwnData(); !fault.empty()) Print("%s\n", fault.c_str());
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
