// What somebody does on shown bars, and who may do it in the editor's stead.
#pragma once

#include <string>
#include <vector>

#include "editor/bars/field_value.h"
#include "editor/bars/tweak_bar.h"

/// What somebody did on the bars in one frame.
struct BarActions {
  struct Edit {
    const TweakBar* bar;
    std::string path;
    FieldValue value;
    bool done;  ///< false while the mouse still pulls at the value
  };
  struct Press {
    const TweakBar* bar;
    std::string path;
  };
  std::vector<Edit> edits;
  std::vector<Press> presses;
};

/// Hears of what is done on the bars by the entry's path on them; nothing happens by itself.
class BarHand {
 public:
  virtual ~BarHand() = default;
  virtual void Press(const std::string& path) = 0;
  /// The value as text, as the bars read it; `done` is false while the mouse still pulls at it.
  virtual void Set(const std::string& path, const std::string& value, bool done) = 0;
};
