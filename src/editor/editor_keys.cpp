// The keys and presses that the editor takes while the bars are shown. They never reach the game, and whoever plays
// with them.
#include "core/pause.h"
#include "core/print.h"
#include "core/selection.h"
#include "editor/acts/arrange.h"
#include "editor/editor.h"
#include "input/input.h"

namespace {

constexpr float kNudge = 0.1f;  // world units
constexpr float kFarNudge = 1.0f;
constexpr float kFineNudge = 0.01f;

bool IsToggle(const SDL_Event& event) { return event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_F1; }

bool IsHeld(const char* left, const char* right) { return Input::IsKeyDown(left) || Input::IsKeyDown(right); }

float NudgeNow() {
  if (IsHeld("shift", "rshift")) return kFarNudge;
  return IsHeld("alt", "ralt") ? kFineNudge : kNudge;
}

Vec3 WayOf(int key) {
  switch (key) {
    case SDLK_LEFT:
      return {-1.0f, 0.0f, 0.0f};
    case SDLK_RIGHT:
      return {1.0f, 0.0f, 0.0f};
    case SDLK_UP:
      return {0.0f, 1.0f, 0.0f};
    case SDLK_DOWN:
      return {0.0f, -1.0f, 0.0f};
    default:
      return {};
  }
}

// What the game hears although the bars are shown: the key that opens the menu, modifiers, which the editor asks the
// input for too, and the function keys that the bars have no use for.
bool IsOfGame(int key) {
  switch (key) {
    case SDLK_ESCAPE:
    case SDLK_LSHIFT:
    case SDLK_RSHIFT:
    case SDLK_LCTRL:
    case SDLK_RCTRL:
    case SDLK_LALT:
    case SDLK_RALT:
      return true;
    default:
      return (key >= SDLK_F1 && key <= SDLK_F12) || (key >= SDLK_F13 && key <= SDLK_F24);
  }
}

// What is not done again and again while the key is held.
bool ActsOnce(int key, bool ctrl) {
  switch (key) {
    case SDLK_F2:
    case SDLK_F4:
    case SDLK_F5:
    case SDLK_F6:
    case SDLK_F7:
    case SDLK_F8:
    case SDLK_DELETE:
      return true;
    case SDLK_c:
    case SDLK_x:
    case SDLK_v:
    case SDLK_d:
      return ctrl;
    default:
      return false;
  }
}

}  // namespace

bool Editor::HandleEvent(const SDL_Event& event) { return HandleBarEvent(event) || HandleShortcut(event); }

bool Editor::HandleBarEvent(const SDL_Event& event) {
  return !try_.trial.IsReplaying() && !IsToggle(event) && view_.HandleEvent(event);
}

bool Editor::HandleShortcut(const SDL_Event& event) {
  if (try_.trial.IsReplaying()) return false;
  if (TakeShortcut(event)) return true;
  if (try_.trial.IsOn()) try_.trial.Hear(event);
  return false;
}

bool Editor::TakeShortcut(const SDL_Event& event) {
  if (IsToggle(event)) {
    if (event.key.repeat != 0) return true;
    const bool twice = card_.PressTwice();
    const bool hidden = !IsShown();
    SetShown(twice || hidden);
    if (twice && hidden) freeze_.Set(paceBefore_);  // the first press was for the card too
    if (twice) card_.Show();
    return true;
  }
  // The key that began a try ends it, bars or no bars.
  if (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_F9 && (IsShown() || try_.trial.IsOn())) {
    if (event.key.repeat == 0) try_.ask = TryState::Ask::kToggle;
    return true;
  }
  if (!IsShown()) return false;
  if (event.type == SDL_KEYDOWN) {
    const int key = event.key.keysym.sym;
    return (event.key.repeat != 0 && ActsOnce(key, IsHeld("ctrl", "rctrl"))) || HandleKey(key);
  }
  const bool isButton = event.type == SDL_MOUSEBUTTONDOWN || event.type == SDL_MOUSEBUTTONUP;
  return isButton && event.button.button == SDL_BUTTON_LEFT && HandlePress(event.button);
}

// A handle, or an archetype in hand, takes the press before anything is picked by it.
bool Editor::HandlePress(const SDL_MouseButtonEvent& event) {
  if (event.type == SDL_MOUSEBUTTONUP) return stageHand_.Release();
  if (IsPausedByGame()) return false;
  const WindowRect window = GetPlatform().GetWindowRect();
  if (!carried_.empty()) {
    const Vec3 mouse = {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f};
    Do([&] { LoadArchetype(std::exchange(carried_, {}), stageHand_.grid.Snapped(mouse)); });
    return true;
  }
  return stageHand_.Press(StageView(window.width, window.height), static_cast<float>(event.x),
                          static_cast<float>(event.y));
}

// Menus keep their keys. Else no key gets past the bars that flies player 1, starts a match or leaves a screen.
bool Editor::HandleKey(int key) {
  if (HandleWindowKey(key)) return true;
  if (IsPausedByGame()) return false;
  if (IsHeld("ctrl", "rctrl") && HandleCommandKey(key)) return true;
  if (key == SDLK_DELETE) {
    if (!RefusesInTry()) Say([this] { return Copies::Kill(history_); });
    return true;
  }
  if (key == SDLK_ESCAPE && !carried_.empty()) {
    carried_.clear();
    return true;
  }
  return HandleArrow(key) || !IsOfGame(key);
}

bool Editor::HandleWindowKey(int key) {
  switch (key) {
    case SDLK_F2:
      TogglePace(Freeze::Pace::kFrozen);
      return true;
    case SDLK_F3:
      freeze_.Step();
      return true;
    case SDLK_F4:
      TogglePace(Freeze::Pace::kSlow);
      return true;
    case SDLK_F5:
      if (!RefusesInTry()) Do([this] { Reload(fileName_); });
      return true;
    case SDLK_F6:
      list_.Toggle();
      return true;
    case SDLK_F7:
      browser_.Toggle();
      return true;
    case SDLK_F8:
      look_.folded = !look_.folded;
      return true;
    default:
      return false;
  }
}

// With Ctrl the arrows to the sides turn.
bool Editor::HandleArrow(int key) {
  const Vec3 way = WayOf(key);
  if (way == Vec3{}) return false;
  if (GetSelection().empty()) return true;
  const bool turns = IsHeld("ctrl", "rctrl") && way.x != 0.0f;
  Say([&] {
    return turns ? Arrange::Turn(history_, -way.x * Grid::kTurnStep) : Arrange::Move(history_, way * NudgeNow());
  });
  return true;
}

bool Editor::HandleCommandKey(int key) {
  switch (key) {
    case SDLK_z:
      Say([this] { return history_.Undo(); });
      return true;
    case SDLK_y:
      Say([this] { return history_.Redo(); });
      return true;
    case SDLK_c:
      Say([this] { return copies_.Copy(); });
      return true;
    case SDLK_x:
      if (!RefusesInTry()) Say([this] { return copies_.Cut(history_); });
      return true;
    case SDLK_v:
      if (!RefusesInTry()) Do([this] { Paste(true); });
      return true;
    case SDLK_d:
      if (!RefusesInTry()) Say([this] { return Copies::Duplicate(history_, CopyShift()); });
      return true;
    default:
      return false;
  }
}
