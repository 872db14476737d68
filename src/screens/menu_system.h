// The stack of open menus. The game stands still while there is one; the top one hears all four pads and the keyboard.
// Main thread only.
#pragma once

#include <memory>
#include <vector>

#include "screens/menu.h"
#include "screens/menu_sticks.h"

/// Why the game stands still while a menu is open.
inline constexpr char kPauseMenuReason[] = "PauseMenu";

class MenuSystem {
 public:
  /// Once a frame, paused or not: pads and keys, which move the selection, open, close and act.
  void Update();

  bool IsOpen() const { return !menuStack_.empty(); }
  std::size_t CountOpen() const { return menuStack_.size(); }
  /// The top of the stack, or null.
  Menu* GetCurrentMenu() const { return menuStack_.empty() ? nullptr : menuStack_.back().get(); }

  /// Puts a menu whose buttons are complete on top.
  void Push(std::unique_ptr<Menu> menu);
  /// Closes the top menu, if there is one; the game goes on when it was the last.
  void CloseTop();
  /// Closes everything without a trace, as at the start of the process.
  void Reset();

  float menuDepth = 1.0f;  ///< depth of the next menu's background; each open menu adds one

 private:
  void UpdateFromPad(int slot);
  void UpdateFromKeys();
  void UpdateFromSticks(int slot);
  void ActivateSelected();

  std::vector<std::unique_ptr<Menu>> menuStack_;
  MenuSticks sticks_;
};

/// The process-wide stack.
MenuSystem& Menus();
