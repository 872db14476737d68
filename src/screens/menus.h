// The game's menus: what each one shows and does, and the ways to open and close them.
#pragma once

#include "screens/menu.h"

void OpenPauseMenu();
/// The menu of the podium; fades the music out.
void OpenEndMenu();
/// Asks whether the button, which must stay where it is meanwhile, is meant.
void OpenConfirmMenu(const MenuButton& button);
/// Shows a page: a level file of one object, its picture.
void OpenPictureMenu(const char* levelName);
void OpenOptionsMenu();

/// One step back; nothing when no menu is open.
void CloseTopMenu();
void CloseAllMenus();
/// Closes the top menu, or opens the pause menu when none is open.
void TogglePauseMenu();
