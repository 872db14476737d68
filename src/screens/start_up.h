// The way from the program's start to the first match: the makers' logo while everything is loaded, a notice about
// controllers, the title. Each screen is an object whose script brings the next one when it is destroyed, so the chain
// runs through the deaths of objects, inside the sweep. A match that runs already ends it: the demo key may start one
// under any screen. Main thread only.
#pragma once

#include <bitset>
#include <cstdint>

#include "core/platform.h"

/// What the screens share. IDs are 0 before, and stay when their objects are gone.
struct StartUp {
  bool loading = true;         ///< something is left to load; for ever, when no logo was ever shown
  bool skipRequested = false;  ///< the player wants to go past the logo
  float spinnerAngle = 0.0f;   ///< radians
  std::uint32_t logoObject = 0;
  std::uint32_t spinnerObject = 0;
  std::uint32_t loadingTextObject = 0;
  std::uint32_t splashObject = 0;
  std::bitset<kGamepadSlots> titleArmed;  ///< slots for which nothing was pressed since the title came
  bool titleWaiting = false;              ///< there is a title
};

/// The process-wide state.
StartUp& GetStartUp();

/// Whether the logo is still loading: no match may start before it is done.
bool IsLogoLoading();

/// From the destructor of a screen: brings the next one, unless a match runs, which ends the chain.
void LeaveScreen(void (*createNext)());
/// The end of the chain: the picture may ripple, the title's music fades out, and Escape opens the pause menu from now
/// on. Once per run.
void FinishStartUp();

/// Whether it has come to that.
bool IsStartUpFinished();

/// No screen brings another one any more.
void EndChain();
bool IsChainEnded();
/// As at the start of the process; before it, abandon what there is.
void ResetStartUp();
