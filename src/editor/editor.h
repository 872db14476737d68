// The level editor inside the running game: a bar of tools, "options", and a bar of the selected objects' fields,
// "GaleEditor". F1 shows and hides both; hidden they take no event and cost nothing. Everything on them can also be set
// and pressed by label, without a window. What changes the scene runs while events are taken, never inside a walk over
// the objects. Main thread only.
#pragma once

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/game_object.h"
#include "editor/acts/history.h"
#include "editor/bars/bar_view.h"
#include "editor/bars/tweak_bar.h"
#include "editor/stage/drag.h"

struct TestObject;

class Editor {
 public:
  /// Both bars with their first values, hidden. Once at the start; again for a fresh state.
  void Init();
  /// Frees what showing the bars took; before the GL context goes.
  void Shutdown() { view_.Shutdown(); }

  /// An event of the window, before anybody else: true when it was the editor's. It is the two below in turn.
  bool HandleEvent(const SDL_Event& event);
  /// An event for what is under the mouse on the bars, or for a text that is being typed there.
  bool HandleBarEvent(const SDL_Event& event);
  /// The keys that show and hide the bars, undo and redo.
  bool HandleShortcut(const SDL_Event& event);
  /// After the events of a frame: what was done on the bars happens.
  void Update();
  /// Over the composed picture.
  void Draw();
  bool IsShown() const { return view_.IsShown(); }

  /// Presses the first button, or sets the first variable from text, of this label on "options", else on "GaleEditor";
  /// "GROUP/LABEL" chooses. What is wrong, or empty.
  std::string Press(std::string_view label);
  std::string Set(std::string_view label, std::string_view value);
  /// The same by the bar's name and the entry's path on it, "options/File/Save Level", which no two entries share;
  /// `done` is false while the mouse still pulls at the value, which makes one step of the history.
  std::string PressAt(std::string_view path);
  std::string SetAt(std::string_view path, std::string_view value, bool done);
  /// Who hears of what is done on the shown bars and does it in the editor's stead, by the two above; null: nobody.
  void SetHand(BarHand* hand) { hand_ = hand; }
  /// What the variable holds, as text; empty when there is none.
  std::string Get(std::string_view label);
  /// What the last action said, oldest line first.
  const std::vector<std::string>& GetStatus() const { return status_; }

 private:
  // Which entries of the property bar show an object.
  struct ObjectRange {
    std::uint32_t id;
    std::size_t first;
    std::size_t end;
  };

  void FillBars();
  void FillTools();
  void FillTestButtons();
  void FillFileButtons();
  void FillObjectButtons();
  void FillPalette();
  void FillProperties();
  const TweakBar* FindBarOf(std::string_view label, const TweakBar::Entry** entry) const;
  const TweakBar* FindBarAt(std::string_view path, const TweakBar::Entry** entry) const;
  std::string PressEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label);
  std::string SetEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label,
                       std::string_view value, bool done);
  const ObjectRange* FindObjectOf(const TweakBar& bar, const TweakBar::Entry& entry) const;
  void ApplyEdit(const TweakBar& bar, const TweakBar::Entry& entry, const FieldValue& value, bool done);
  void PressButton(const TweakBar& bar, const TweakBar::Entry& entry);
  void Do(const std::function<void()>& action);
  void Toggle();

  void MakeTestObject(const TestObject& test);
  void SaveLevel();
  void LoadLevel();
  void LoadArchetype();
  void AddComponent(std::string_view textName);
  void AddScript(const std::string& name);
  void Kill();
  /// The objects that were picked first and last, for which no other stands in; null with a line when it is not there.
  GameObject* FirstSelected() const;
  GameObject* LastSelected() const;

  TweakBar tools_{"options"};
  TweakBar properties_{"GaleEditor"};
  std::vector<ObjectRange> ranges_;
  BarView view_;
  BarHand* hand_ = nullptr;
  History history_;
  Drag drag_;

  std::string fileName_;
  std::string archetypeName_;
  std::string textureName_;
  float levelDuration_ = 0.0f;  // game seconds
  std::string scriptName_;
  int componentToAdd_ = 0;
  std::string find_;
  int autosaveCount_ = 0;
  std::vector<std::string> status_;
  std::vector<std::string> faults_;  // of the level saved last
};

/// The process-wide editor.
Editor& GetEditor();
