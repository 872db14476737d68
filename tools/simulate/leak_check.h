// Nothing stays behind: neither in the object manager's books nor in the lists that objects' parts enter, nor in the
// sound layer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/game_object.h"

class LeakCheck {
 public:
  /// At this many objects in one frame it was a level that came; fewer are what scripts make.
  static constexpr std::size_t kLevel = 100;
  /// So many more than levels brought pile up. A match has had 70.
  static constexpr std::size_t kMostMade = 1000;

  /// After every frame. What is wrong, with the object if it is one, or nothing.
  std::string EndFrame();

 private:
  std::string CheckBooks() const;
  std::string CheckSwept();
  std::string CheckPile();
  static std::string CheckColliders();
  std::string CheckEmitters();
  static std::string CheckSound();

  std::vector<std::uint32_t> dead_;  // IDs that were marked dead at the last frame's end
  std::size_t count_ = 0;            // of objects, then
  std::size_t brought_ = 0;          // by levels
  std::vector<const GameObject*> holders_;
};
