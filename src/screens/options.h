// What the options menu changes. It holds for the run; nothing is kept in a file.
#pragma once

#include <cstdint>

#include "screens/menu.h"

struct Options {
  bool musicMuted = false;
  bool allMuted = false;
  bool menuFullscreen = true;  ///< the menu's own copy; the window starts full-screen
};

/// The process-wide options; a reset is an assignment of Options{}.
Options& GetOptions();

/// The sound is as muted as the options say.
void ApplyMutes();

/// A button that shows the state of an option.
struct OptionToggle {
  const char* offImage;
  const char* onImage;
  const bool* flag;  ///< not owned; lives as long as the process
  MenuCallback callback;
};

/// Gives the button's object the script that shows the option, and shows it.
void AttachToggle(std::uint32_t objectId, const OptionToggle& toggle);

/// Callbacks of the buttons; `argument` points at the ID of the button's object, whose picture follows at once, because
/// no script runs while a menu is open.
void ToggleMusicMute(const void* argument);
void ToggleAllMute(const void* argument);
void ToggleFullscreen(const void* argument);
