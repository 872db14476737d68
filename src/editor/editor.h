// The level editor inside the running game: a bar of tools, "options", a bar of the selected objects' fields,
// "GaleEditor", with one of what several have in common above it, "all selected", a bar of what is done to the scene as
// a whole, "stage", and two that open, "objects" and "browse". F1 shows and hides them; hidden they take no event and
// cost nothing. Everything on them can also be set and pressed by label, without a window. What changes the scene runs
// while events are taken, never inside a walk over the objects. Main thread only.
#pragma once

#include <SDL.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/game_object.h"
#include "core/platform.h"
#include "editor/acts/copies.h"
#include "editor/acts/history.h"
#include "editor/bars/bar_view.h"
#include "editor/bars/tweak_bar.h"
#include "editor/browser.h"
#include "editor/files/file_watch.h"
#include "editor/files/picture_faults.h"
#include "editor/files/played_copy.h"
#include "editor/files/recovery.h"
#include "editor/freeze.h"
#include "editor/key_card.h"
#include "editor/object_list.h"
#include "editor/stage/stage_hand.h"
#include "editor/try_state.h"

struct TestObject;

class Editor {
 public:
  /// The bars with their first values, hidden. Once at the start; again for a fresh state.
  void Init();
  /// Frees what showing the bars took; before the GL context goes. The run ends as it should.
  void Shutdown();
  /// From now on unsaved work is put aside from time to time, and what a run that broke off has left is offered.
  void StartRecovery() { recovery_.Start(); }

  /// An event of the window, before anybody else: true when it was the editor's. It is the two below in turn.
  bool HandleEvent(const SDL_Event& event);
  /// An event for what is under the mouse on the bars, or for a text that is being typed there.
  bool HandleBarEvent(const SDL_Event& event);
  /// The key that shows and hides the bars and, while they are shown, the keys and presses that the editor has for the
  /// scene.
  bool HandleShortcut(const SDL_Event& event);
  /// After the events of a frame: what was done on the bars happens.
  void Update();
  /// Over the composed picture.
  void Draw();
  bool IsShown() const { return view_.IsShown(); }
  /// Before each frame: a try of the level begins and ends, and its time is travelled. Then, as long as NextReplayed is
  /// true, the frame that follows is one that has been and is run again.
  void BetweenFrames();
  bool NextReplayed() { return try_.trial.NextReplayed(); }
  bool IsTrying() const { return try_.trial.IsOn(); }
  /// How fast the scene's time runs.
  Freeze::Pace GetPace() const { return freeze_.Get(); }
  /// Whether there are changes that no save holds.
  bool IsUnsaved() const;
  /// Whether the scene may go by `act`, "quit" say. Over unsaved changes the first time it is false: the bars are shown
  /// and ask, and the same act the next time goes through.
  bool MayLose(const std::string& act);

  /// Presses the first button, or sets the first variable from text, of this label on "options", else on "GaleEditor",
  /// else on the other bars; "GROUP/LABEL" chooses. What is wrong, or empty.
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
  // A line of lint, and the object that it is about, 0 for none.
  struct FaultLine {
    std::string text;
    std::uint32_t objectId;
  };

  void FillBars();
  void FillTools();
  void FillTestButtons();
  void FillFileButtons();
  void FillObjectButtons();
  void FillPalette();
  void FillMessages();
  void FillProperties();
  void FillCommon();
  void FillStage();
  void FillTry();
  void FillTime();
  void FillFiles();
  void FillCopies();
  void FillArrange();
  void FillChanged();
  std::array<const TweakBar*, 6> AllBars() const {
    return {&tools_, &properties_, &common_, &stage_, &list_.GetBar(), &browser_.GetBar()};
  }
  std::vector<BarWindow> Windows();
  std::vector<StageLine> Lines(const WindowRect& window) const;
  void Perform(const BarActions& actions);
  void HandOn(const BarActions& actions);
  const TweakBar* FindBarOf(std::string_view label, const TweakBar::Entry** entry) const;
  const TweakBar* FindBarAt(std::string_view path, const TweakBar::Entry** entry) const;
  std::string PressEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label);
  std::string SetEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label,
                       std::string_view value, bool done);
  const ObjectRange* FindObjectOf(const TweakBar& bar, const TweakBar::Entry& entry) const;
  void ApplyEdit(const TweakBar& bar, const TweakBar::Entry& entry, const FieldValue& value, bool done);
  void ApplyCommonEdit(const TweakBar::Entry& entry, const FieldValue& value, bool done);
  void PressButton(const TweakBar& bar, const TweakBar::Entry& entry);
  void Do(const std::function<void()>& action);
  void Say(const std::function<std::string()>& action);
  void SetShown(bool shown);
  bool HandleKey(int key);
  bool HandleCommandKey(int key);
  bool HandleWindowKey(int key);
  bool HandleArrow(int key);
  bool HandlePress(const SDL_MouseButtonEvent& event);
  bool TakeShortcut(const SDL_Event& event);
  void TogglePace(Freeze::Pace pace);
  void StartTry();
  void EndTry();
  void KeepEdits();
  std::vector<ValueAct> EditsOfTry() const;
  void Scrub(bool done);
  bool Refuses(const TweakBar& bar, const TweakBar::Entry& entry);
  bool RefusesInTry();
  void SweepKilled();
  Vec3 CopyShift() const;
  void Paste(bool atMouse);

  void MakeTestObject(const TestObject& test);
  void SaveLevel();
  void LoadLevel();
  void TakeLevel(const std::string& name);
  void LoadArchetype(const std::string& name, const Vec3& place);
  void NewLevel();
  void Reload(const std::string& name);
  void OfferRecovered();
  void PlayLevel();
  void HearOfPlayed();
  bool MayLoseBy(const std::string& act);
  // A try counts its states for itself.
  SceneVersion GetVersion() const {
    return {try_.trial.IsOn() ? ~history_.GetState() : history_.GetState(), levelDuration_};
  }
  void MarkSaved() { saved_ = GetVersion(); }
  std::string TextToKeep();
  void ShowFaults(const std::string& name, const std::vector<std::string>& lines,
                  const std::vector<std::uint32_t>& ids);
  void AddComponent(std::string_view textName);
  void AddScript(const std::string& name);
  void Choose(Browser::Page page, const std::string& name);
  void Kill();
  /// The objects that were picked first and last, for which no other stands in; null with a line when it is not there.
  GameObject* FirstSelected() const;
  GameObject* LastSelected() const;

  TweakBar tools_{"options"}, properties_{"GaleEditor"}, common_{"all selected"}, stage_{"stage"};
  ObjectList list_;
  Browser browser_;
  KeyCard card_;
  std::vector<ObjectRange> ranges_;
  BarView view_;
  BarLook look_;
  BarHand* hand_ = nullptr;
  History history_;
  Freeze freeze_;
  Freeze::Pace paceBefore_ = Freeze::Pace::kRunning;  // when the bars were hidden last
  TryState try_;
  StageHand stageHand_;
  Copies copies_;
  FileWatch watch_;
  PictureFaults pictureFaults_;
  Recovery recovery_;
  PlayedCopy played_;

  static constexpr std::size_t kMaxFaults = 12;  // lines of lint

  std::string fileName_, archetypeName_, textureName_, scriptName_, find_;
  float levelDuration_ = 0.0f;  // game seconds
  int componentToAdd_ = 0, gridChoice_ = 0, autosaveCount_ = 0;
  SceneVersion saved_;                    // that the last save or load holds
  std::string carried_;                   // archetype that the next press in the picture puts there
  bool acted_ = false;                    // something was done since the last frame
  bool askedNow_ = false;                 // by the act that is being done
  std::string asked_;                     // what would lose unsaved changes and was asked about last
  std::string loadedName_;                // of the level that was loaded or saved last
  std::vector<std::uint32_t> loadedIds_;  // its objects in the order of the file
  std::vector<std::string> status_;
  std::vector<FaultLine> faults_;  // of the level saved or offered last
};

/// The process-wide editor.
Editor& GetEditor();
