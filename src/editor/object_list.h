// The bar that lists the objects of the scene: what they are called and are, which of them by which filter. A click
// selects, with Shift more, twice rings the object in the picture.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/game_object.h"
#include "editor/bars/tweak_bar.h"

class ObjectList {
 public:
  static constexpr std::size_t kMaxRows = 300;  ///< more ask for a filter

  using Ringer = std::function<void(std::uint32_t id)>;

  /// Anew for the scene as it is; `levelIds`: what the level brought that was loaded last. `ring` outlives the rows.
  void Fill(const std::vector<std::uint32_t>& levelIds, const Ringer& ring);
  const TweakBar& GetBar() const { return bar_; }
  bool IsShown() const { return shown_; }
  void Toggle() { shown_ = !shown_; }
  void Reset();

 private:
  bool Passes(const GameObject& object, const std::string& line, const std::vector<std::uint32_t>& levelIds) const;
  void AddChooser(const std::vector<std::uint32_t>& levelIds);
  void AddRow(const GameObject& object, const std::string& line, const Ringer& ring);

  TweakBar bar_{"objects"};
  bool shown_ = false;
  std::string filter_;
  int kind_ = 0;
  bool madeByPiece_ = false;
};
