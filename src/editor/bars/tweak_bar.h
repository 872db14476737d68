// A bar of the editor as data: its groups, variables and buttons in order, found by label. It knows nothing of how it
// is shown, so that a script can set variables and press buttons without a window (see bar_view.h for the window).
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/field_bar.h"
#include "editor/bars/field_value.h"

class TweakBar final : public FieldBar {
 public:
  struct Entry {
    enum class Kind { kGroup, kEndGroup, kVariable, kButton, kText };

    Kind kind;
    std::string name;                  ///< of a group, a variable or a button; a line of text
    std::string label = {};            ///< as shown
    std::string inside = {};           ///< the groups around it: "/GROUP/GROUP/"
    std::string path = {};             ///< groups and name, with "#2" and so on after the first: unique on the bar
    Field field = {};                  ///< of a variable
    std::function<void()> press = {};  ///< of a button; of a variable: opens a page to choose its value from
    Insertion insertion = {};          ///< of a button that puts something into a list
    bool hidden = false;               ///< not shown, but found: what a click with a modifier does
    bool mixed = false;                ///< of a variable: it stands for several, which do not hold the same
    bool row = false;                  ///< of a button: a line of a list
    bool indented = false;             ///< of a row: as if it had a picture
    bool marked = false;               ///< of a button: what it stands for is chosen, or goes on
    std::string onShift = {};          ///< of a row: the path of what a click with Shift presses instead
    std::string onTwice = {};          ///< of a row: the path of what the second of two quick clicks presses too
    std::string picture = {};          ///< of a button: the picture in `Texture/` that it shows
    std::string hint = {};             ///< shown while the mouse rests on it
    std::string fault = {};            ///< of a variable: why what it names is not seen; under it
  };

  explicit TweakBar(std::string name) : name_(std::move(name)) {}

  void BeginGroup(std::string_view name) override;
  void EndGroup() override;
  void Add(Field field) override;
  void AddButton(std::string_view name, std::string_view label, std::function<void()> press) override;
  void AddInsertButton(std::string_view name, std::string_view label, Insertion insertion) override;
  using FieldBar::Add;
  using FieldBar::AddButton;
  /// Keeps a value until the bar is emptied, for a variable of the bar's own.
  FieldTarget KeepValue(const FieldValue& value);
  /// Ends a group; one in which nothing is goes.
  void EndGroupUnlessEmpty();
  /// A line to read.
  void AddText(std::string_view line);

  /// Empties the bar: groups, variables and buttons.
  void RemoveAll();

  const std::string& GetName() const { return name_; }
  const std::vector<Entry>& GetEntries() const { return entries_; }
  /// The entry added last, or the one at that place, to say more of it.
  Entry& GetLast() { return entries_.back(); }
  Entry& GetEntry(std::size_t index) { return entries_[index]; }
  /// The first variable or button of that name or label. "GROUP/LABEL" looks within groups of that name only, which may
  /// be several, outer ones first; the bar's own name is the outermost. Blanks at the ends do not count. Null when
  /// there is none.
  const Entry* Find(std::string_view label) const;

 protected:
  float* Keep(float value) override { return &keptFloats_.emplace_back(value); }
  int* Keep(int value) override { return &keptInts_.emplace_back(value); }

 private:
  Entry& Append(Entry::Kind kind, std::string_view name, std::string_view label);
  bool Matches(const Entry& entry, std::string_view label) const;

  std::string name_;
  std::vector<Entry> entries_;
  std::vector<std::size_t> groupStarts_;  // of the open groups, within inside_
  std::string inside_ = "/";
  std::unordered_map<std::string, int> used_;
  std::deque<float> keptFloats_;
  std::deque<int> keptInts_;
  std::deque<FieldValue> keptValues_;
};
