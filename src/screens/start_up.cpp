#include "screens/start_up.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "graphics/preload_list.h"
#include "graphics/renderer.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "screens/menus.h"

namespace {

struct Chain {
  bool finished = false;
  bool ended = false;
};

Chain& GetChain() {
  static Chain chain;
  return chain;
}

// Repeats of a held key would let the menu flicker.
void PressPauseKey() {
  if (!Input::IsKeyDown("esc")) TogglePauseMenu();
}

}  // namespace

StartUp& GetStartUp() {
  static StartUp startUp;
  return startUp;
}

bool IsLogoLoading() {
  const GameObject* logo = Objects().GetObject(GetStartUp().logoObject);
  return GetStartUp().loading && logo != nullptr && logo->alive;
}

void LeaveScreen(void (*createNext)()) {
  if (IsChainEnded()) return;
  if (IsMatchRunning())
    FinishStartUp();
  else
    createNext();
}

void FinishStartUp() {
  if (GetChain().finished) return;
  GetChain().finished = true;
  GetRenderer().SetScreenShader("wave");
  Audio::StopLongLived(Sound::kTitleMusic);
  Input::BindKeyDown(SDLK_ESCAPE, PressPauseKey);
}

bool IsStartUpFinished() { return GetChain().finished; }

void EndChain() { GetChain().ended = true; }

bool IsChainEnded() { return GetChain().ended; }

void ResetStartUp() {
  ResetPreload();
  GetStartUp() = {};
  GetChain() = {};
}
