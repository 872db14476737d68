#include "screens/menu_system.h"

#include <utility>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/pause.h"
#include "core/run_log.h"
#include "input/gamepad.h"
#include "input/input.h"
#include "match/episode/new_game.h"
#include "screens/menus.h"

namespace {

constexpr float kStickMove = 0.5f;  // of the full way

bool IsPrevious(const StickPosition& stick) { return stick.y > kStickMove || stick.x < -kStickMove; }
bool IsNext(const StickPosition& stick) { return stick.y < -kStickMove || stick.x > kStickMove; }

bool IsPreviousKeyTriggered() {
  return Input::IsLetterTriggered('w') || Input::IsLetterTriggered('a') || Input::IsKeyTriggered("arrowkeyup") ||
         Input::IsKeyTriggered("arrowkeyleft");
}

bool IsNextKeyTriggered() {
  return Input::IsLetterTriggered('s') || Input::IsLetterTriggered('d') || Input::IsKeyTriggered("arrowkeydown") ||
         Input::IsKeyTriggered("arrowkeyright");
}

}  // namespace

MenuSystem& Menus() {
  static MenuSystem menus;
  return menus;
}

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

// A stick moves the selection once, and again only after both sticks were back in the middle.
void MenuSystem::UpdateFromSticks(int slot) {
  const Gamepad& pad = Input::GetGamepad(slot);
  const StickPosition left = pad.LeftStick();
  const StickPosition right = pad.RightStick();
  const bool next = IsNext(left) || IsNext(right);
  const bool previous = IsPrevious(left) || IsPrevious(right);
  bool& released = stickReleased_[static_cast<std::size_t>(slot)];
  if (!next && !previous) {
    released = true;
    return;
  }
  if (!released) return;
  released = false;
  if (next)
    GetCurrentMenu()->SelectNext();
  else
    GetCurrentMenu()->SelectPrevious();
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

void MenuSystem::Push(std::unique_ptr<Menu> menu) {
  LogEvent("menu open %s", menu->GetKind());
  menu->Finish();
  menuStack_.push_back(std::move(menu));
}

void MenuSystem::CloseTop() {
  if (menuStack_.empty()) return;
  menuDepth -= 1.0f;
  LogEvent("menu close %s", menuStack_.back()->GetKind());
  menuStack_.pop_back();
  if (menuStack_.empty()) ReleasePause(kPauseMenuReason);
}

void MenuSystem::Reset() { *this = {}; }
