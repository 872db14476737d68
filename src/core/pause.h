// Why the game stands still. Each holder adds a reason and takes its own away; the game runs when none is left.
// A reason may be held several times. Main thread only.
#pragma once

#include <string_view>

/// The reason of the editor's freeze: the scene stands still while it is edited, but is seen as if it ran.
inline constexpr char kFrozenReason[] = "Frozen";

/// The reason while another program has the keyboard.
inline constexpr char kFocusLostReason[] = "FocusLost";

/// True while at least one reason is held.
bool IsPaused();
/// True while another reason than the editor's freeze is held.
bool IsPausedByGame();
/// True while the editor's freeze is held.
bool IsFrozen();

/// Adds a reason; the same one again counts again.
void RequestPause(std::string_view reason);

/// Takes away the first entry of this reason, if there is one.
void ReleasePause(std::string_view reason);

/// Takes away all entries of this reason.
void ReleasePauseWholly(std::string_view reason);

/// Takes away every reason.
void ClearPauseReasons();
