#include "screens/menu_system.h"

#include <utility>

#include "core/pause.h"
#include "core/run_log.h"
#include "core/scene_state.h"

MenuSystem& Menus() {
  static SceneState<MenuSystem> menus;
  return *menus;
}

void MenuSystem::Push(std::unique_ptr<Menu> menu) {
  LogEvent("menu open %s", menu->GetKind());
  if (menuStack_.empty()) sticks_.Begin();
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
