// What the open menus hear. Buttons open other menus, so this stands above the menus, which stand above the stack.
#include <utility>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "screens/menu_system.h"
#include "screens/menus.h"

namespace {

bool IsPreviousKeyTriggered() {
  return Input::IsLetterTriggered('w') || Input::IsLetterTriggered('a') || Input::IsKeyTriggered("arrowkeyup") ||
         Input::IsKeyTriggered("arrowkeyleft");
}

bool IsNextKeyTriggered() {
  return Input::IsLetterTriggered('s') || Input::IsLetterTriggered('d') || Input::IsKeyTriggered("arrowkeydown") ||
         Input::IsKeyTriggered("arrowkeyright");
}

}  // namespace

void MenuSystem::Update() {
  for (int slot = 0; slot < kGamepadSlots; ++slot) UpdateFromPad(slot);
  if (IsOpen()) UpdateFromKeys();
}

// Every action may close or open menus: each step looks at the top anew.
void MenuSystem::UpdateFromPad(int slot) {
  const Gamepad& pad = Input::GetGamepad(slot);
  if (pad.IsButtonTriggered(Gamepad::kButtonStart) && IsMatchRunning()) TogglePauseMenu();
  if (!IsOpen()) return;
  UpdateFromSticks(slot);
  for (const int button : {Gamepad::kButtonUp, Gamepad::kButtonLeft})
    if (pad.IsButtonTriggered(button)) GetCurrentMenu()->SelectPrevious();
  for (const int button : {Gamepad::kButtonDown, Gamepad::kButtonRight})
    if (pad.IsButtonTriggered(button)) GetCurrentMenu()->SelectNext();
  if (pad.IsButtonTriggered(Gamepad::kButtonA)) ActivateSelected();
}

void MenuSystem::UpdateFromSticks(int slot) {
  switch (sticks_.Take(slot)) {
    case MenuSticks::Move::kNext:
      GetCurrentMenu()->SelectNext();
      break;
    case MenuSticks::Move::kPrevious:
      GetCurrentMenu()->SelectPrevious();
      break;
    case MenuSticks::Move::kNone:
      break;
  }
}

void MenuSystem::UpdateFromKeys() {
  if (IsPreviousKeyTriggered()) GetCurrentMenu()->SelectPrevious();
  if (IsNextKeyTriggered()) GetCurrentMenu()->SelectNext();
  if (Input::IsKeyTriggered("enter") || Input::IsKeyTriggered("space")) ActivateSelected();
}

void MenuSystem::ActivateSelected() {
  const MenuButton* button = GetCurrentMenu()->GetSelected();
  if (button == nullptr) return;
  if (button->needsConfirm) {
    OpenConfirmMenu(*button);
  } else {
    // The action may close the menu, and the button is gone then.
    const auto [callback, argument] = std::pair(button->callback, button->argument);
    callback(argument);
  }
  Audio::Play(Sound::kSquidCollision, Audio::kOneShot);
}
