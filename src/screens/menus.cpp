#include "screens/menus.h"

#include <utility>

#include "audio/audio.h"
#include "core/pause.h"
#include "match/episode/new_game.h"
#include "screens/menu_system.h"
#include "screens/options.h"

namespace {

constexpr char kBoard[] = "menubackground";
constexpr float kLift = 0.5f;  // of the buttons over the depth

Vec3 Place(float x, float y) { return {x, y, Menus().menuDepth + kLift}; }

// The first menu's board lies one lower than its buttons' layer, that of the others in it.
std::unique_ptr<Menu> BeginFirstMenu(const char* kind) {
  if (!Menus().IsOpen()) RequestPause(kPauseMenuReason);  // a second request would never be released
  auto menu = std::make_unique<Menu>(kind, kBoard, Menus().menuDepth);
  Menus().menuDepth += 1.0f;
  return menu;
}

std::unique_ptr<Menu> BeginMenu(const char* kind, const char* background) {
  Menus().menuDepth += 1.0f;
  return std::make_unique<Menu>(kind, background, Menus().menuDepth);
}

void Close(const void* /*argument*/) { CloseTopMenu(); }
void Restart(const void* /*argument*/) { AskForNewGame(); }
void Quit(const void* /*argument*/) { GetPlatform().running = false; }
void ShowPage(const void* argument) { OpenPictureMenu(static_cast<const char*>(argument)); }
void ShowOptions(const void* /*argument*/) { OpenOptionsMenu(); }

// The callback may close the menu that the button stands in.
void ConfirmAction(const void* argument) {
  const MenuButton confirmed = *static_cast<const MenuButton*>(argument);
  confirmed.callback(confirmed.argument);
}

void AddToggle(Menu& menu, int index, float y, const char* label, const OptionToggle& toggle) {
  MenuButton& button = menu.AddButton(
      {.position = Place(2.0f, y), .callback = toggle.callback, .index = index, .picture = toggle.offImage});
  button.argument = &button.objectId;
  AttachToggle(button.objectId, toggle);
  menu.AddLabel(label, Place(-2.0f, y));
}

}  // namespace

void OpenPauseMenu() {
  auto menu = BeginFirstMenu("pause");
  menu->AddButton({.position = Place(0.0f, 6.0f), .callback = Close, .index = 0, .picture = "Resume.png"});
  menu->AddButton(
      {.position = Place(0.0f, 4.0f), .callback = Restart, .index = 1, .picture = "Restart.png", .needsConfirm = true});
  menu->AddButton({.position = Place(0.0f, 2.0f),
                   .callback = ShowPage,
                   .index = 2,
                   .argument = "howtoplaylevel",
                   .picture = "HowToPlay.png"});
  menu->AddButton({.position = Place(0.0f, 0.0f), .callback = ShowOptions, .index = 3, .picture = "OptionsButton.png"});
  menu->AddButton({.position = Place(0.0f, -2.0f),
                   .callback = ShowPage,
                   .index = 4,
                   .argument = "creditslevel",
                   .picture = "CreditsButton.png"});
  menu->AddButton(
      {.position = Place(0.0f, -5.0f), .callback = Quit, .index = 5, .picture = "QuitGame.png", .needsConfirm = true});
  Menus().Push(std::move(menu));
}

void OpenEndMenu() {
  auto menu = BeginFirstMenu("end");
  menu->AddButton({.position = Place(2.5f, 0.0f), .callback = Restart, .index = 0, .picture = "Restart.png"});
  menu->AddButton({.position = Place(-2.5f, 0.0f), .callback = Quit, .index = 1, .picture = "QuitGame.png"});
  Menus().Push(std::move(menu));
  Audio::StopMusic();
}

void OpenConfirmMenu(const MenuButton& button) {
  auto menu = BeginMenu("confirm", kBoard);
  menu->AddButton({.position = Place(-2.5f, 0.0f),
                   .callback = ConfirmAction,
                   .index = 1,
                   .argument = &button,
                   .picture = "Confirm.png"});
  menu->AddButton({.position = Place(2.5f, 0.0f), .callback = Close, .index = 0, .picture = "Cancel.png"});
  Menus().Push(std::move(menu));
}

void OpenPictureMenu(const char* levelName) {
  auto menu = BeginMenu("picture", levelName);
  menu->AddButton({.position = Place(0.0f, -6.0f), .callback = Close, .index = 0, .picture = "Cancel.png"});
  Menus().Push(std::move(menu));
}

void OpenOptionsMenu() {
  auto menu = BeginMenu("options", kBoard);
  AddToggle(*menu, 0, 4.0f, "MuteBackgroundMusicButton.png",
            {"Unmuted.png", "Muted.png", &GetOptions().musicMuted, ToggleMusicMute});
  AddToggle(*menu, 1, 1.0f, "MuteAllSoundButton.png",
            {"Unmuted.png", "Muted.png", &GetOptions().allMuted, ToggleAllMute});
  AddToggle(*menu, 2, -2.0f, "ToggleFullScreen.png",
            {"Windowed.png", "Fullscreen.png", &GetOptions().menuFullscreen, ToggleFullscreen});
  menu->AddButton({.position = Place(0.0f, -6.0f), .callback = Close, .index = 3, .picture = "Cancel.png"});
  Menus().Push(std::move(menu));
}

void CloseTopMenu() { Menus().CloseTop(); }

void CloseAllMenus() {
  while (Menus().IsOpen()) Menus().CloseTop();
}

void TogglePauseMenu() {
  if (Menus().IsOpen())
    CloseTopMenu();
  else
    OpenPauseMenu();
}
