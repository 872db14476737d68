// What somebody does on shown bars.
#pragma once

#include <string>
#include <vector>

#include "editor/field_value.h"
#include "editor/tweak_bar.h"

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
