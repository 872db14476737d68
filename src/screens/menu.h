// One open menu: a picture behind, buttons of which one is selected, labels. All of them are objects of the scene,
// which die with the menu; one that is missing is left out.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "physics/math/vec3.h"

/// What a button does. `argument` is whatever the button was given; its type is the callback's affair.
using MenuCallback = void (*)(const void* argument);

struct MenuButton {
  MenuCallback callback = nullptr;
  const void* argument = nullptr;
  std::uint32_t objectId = 0;
  int index = 0;  ///< place in the order of selection
  bool highlighted = false;
  bool needsConfirm = false;  ///< asks before it acts
};

/// What a new button is made of.
struct ButtonDescription {
  Vec3 position;
  MenuCallback callback = nullptr;
  int index = 0;  ///< place in the order of selection
  const void* argument = nullptr;
  const char* picture = nullptr;  ///< null gives an object without a sprite
  bool needsConfirm = false;
};

class Menu {
 public:
  /// Loads the archetype `backgroundName` as the picture behind, at this depth.
  Menu(const char* kind, const std::string& backgroundName, float depth);
  Menu(const Menu&) = delete;
  Menu& operator=(const Menu&) = delete;
  ~Menu();

  /// Adds a button; the reference is good as long as the menu.
  MenuButton& AddButton(const ButtonDescription& description);
  void AddLabel(const char* picture, const Vec3& position);
  /// Brings the buttons into their order and selects the first; after the last one is added.
  void Finish();

  /// The next or previous button, around the ends; without buttons nothing.
  void SelectNext();
  void SelectPrevious();
  /// The selected button, or null in a menu without any.
  const MenuButton* GetSelected() const { return buttons_.empty() ? nullptr : buttons_[selected_].get(); }
  std::size_t GetSelectedIndex() const { return selected_; }
  /// For the run's log.
  const char* GetKind() const { return kind_; }

 private:
  void Select(std::size_t index);

  const char* kind_;
  std::uint32_t backgroundId_ = 0;
  std::vector<std::unique_ptr<MenuButton>> buttons_;
  std::vector<std::uint32_t> extraIds_;  // labels
  std::size_t selected_ = 0;
};

/// Turns the button green and bulging, with a sound; and back.
void Highlight(MenuButton& button);
void Unhighlight(MenuButton& button);
