#include "editor/key_card.h"

#include <algorithm>
#include <string>

namespace {

struct KeyLine {
  const char* key;  // none: a heading
  const char* does;
};

constexpr KeyLine kLines[] = {{"F1", "bars on and off; twice: this page"},
                              {"F2", "time stands still, or runs"},
                              {"F3, F4", "one frame; one frame in four"},
                              {"F5", "FileName anew from the disk"},
                              {"F6, F7, F8", "list of objects; pages to choose from; bars folded"},
                              {"F9", "try the level in a match, and back to it"},
                              {nullptr, "What is selected"},
                              {"click, Shift+click", "this one; this one too"},
                              {"drag from an empty place", "all inside the frame"},
                              {"drag one of them", "moves them all, on the grid; Ctrl: off it"},
                              {"arrows", "move by 0.1; Shift: by 1; Alt: by 0.01"},
                              {"Ctrl + left, right", "turn by 15 degrees"},
                              {"Delete", "gone"},
                              {nullptr, "Text of the level"},
                              {"Ctrl + C, X, V, D", "copy, cut, paste at the mouse, duplicate"},
                              {"Ctrl + Z, Y", "undo, redo"},
                              {nullptr, "Handles of the one that is selected"},
                              {"square upper right", "size of the picture"},
                              {"square above", "turn, by 15 degrees; Ctrl: freely"},
                              {"square lower right", "collider"},
                              {"square at the left", "circle of the broad phase"},
                              {"arrow", "velocity"},
                              {nullptr, "Fields"},
                              {"pull at a number", "changes it; Ctrl+click or two clicks: type it"},
                              {"...", "choose by sight"},
                              {"rest the mouse on it", "what it means, its unit and range"}};

constexpr std::size_t kKeyWidth = 28;  // letters

}  // namespace

const TweakBar& KeyCard::GetBar() {
  if (!bar_.GetEntries().empty()) return bar_;
  for (const KeyLine& line : kLines) {
    std::string text = line.key == nullptr ? std::string{} : "  " + std::string(line.key);
    if (line.key != nullptr) text.resize(std::max(text.size() + 1, kKeyWidth), ' ');
    bar_.AddText(text + line.does);
  }
  return bar_;
}
