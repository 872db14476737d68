// A level that is being tried: its scene stands aside as it is, a match of its own runs, and what it is given is
// recorded, so that it can be run again up to any frame, unseen and unheard. The match depends on the level's text, the
// wishes and the recording alone. Scenes are exchanged between frames. Main thread only.
#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "audio/sound_ids.h"
#include "core/run_log.h"
#include "editor/acts/value_change.h"
#include "editor/trial/match_text.h"
#include "editor/trial/tape.h"
#include "editor/trial/tape_platform.h"
#include "graphics/renderer.h"
#include "physics/step.h"
#include "screens/options.h"

class Trial {
 public:
  Trial() = default;
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  /// Puts the scene aside and starts the match, of the objects that are not Core. What stands in the way, or empty.
  std::string Start(const TryWishes& wishes);
  /// The scene stands again as it was put aside.
  void End();
  bool IsOn() const { return on_; }
  /// From its start again; what it was given is forgotten.
  void Restart();

  /// An event that the game gets, and an edit of the match.
  void Hear(const SDL_Event& event) { tape_.Hear(event); }
  void Hear(const ValueChange& change) { tape_.Hear(change); }
  /// Before each frame, and at the end of its events. A frame that runs, or is edited, where more is recorded ends the
  /// recording there: true.
  void BeginFrame() { before_ = TakeInputState(); }
  bool EndEvents(bool frozen, bool onBars);

  /// Frames that have run up to now, and that are recorded.
  int GetRun() const { return tape_.CountRun(at_); }
  int GetRecorded() const { return tape_.CountRun(tape_.GetLength()); }
  /// Goes to where that many frames have run, by running them again: as long as NextReplayed is true the frame that
  /// follows belongs to it.
  void Jump(int run);
  bool NextReplayed();
  bool IsReplaying() const { return replaying_; }
  /// In a frame that is run again, at the end of its events.
  void EndReplayedEvents();

  /// The level's object that one of the match was made of; 0 for none. Known beyond the end of the try.
  std::uint32_t ToLevel(std::uint32_t id) const;
  /// Those of the acts that are of objects which the level has, for these. How many were left out is added to `lost`.
  std::vector<ValueAct> ForLevel(std::vector<ValueAct> acts, int& lost) const;
  /// What `take` makes of the level that stands aside with these acts done, which it has not afterwards.
  std::string OfLevelWith(const std::vector<ValueAct>& acts, const std::function<std::string()>& take);

 private:
  // What is process-wide but not of the scene.
  struct Around {
    Renderer::Screen screen;
    std::string background;
    std::optional<Sound> music;
    Options options;
    Input::Pointer pointer;
  };

  void BuildScene();
  void DestroyScene();
  void BeginReplay();
  void EndReplay();
  void SetFrozen(bool frozen);

  bool on_ = false;
  bool replaying_ = false;
  bool jumped_ = false;  // since the last frame that was recorded
  bool own_ = false;     // the level holds the match, and is no piece of one
  TryWishes wishes_;
  std::string levelText_;
  std::vector<std::uint32_t> levelIds_;  // of the text's objects
  std::map<std::uint32_t, std::uint32_t> toLevel_;
  Around level_;
  Around start_;
  Tape tape_;
  std::size_t at_ = 0;      // frames of the tape that have been
  std::size_t target_ = 0;  // of a jump
  InputState before_;
  TapePlatform platform_;
  // what stood before the frames that are run again
  InputState live_;
  Platform* livePlatform_ = nullptr;
  RunLogListener* liveLog_ = nullptr;
  GalePhysics::StepObserver* liveObserver_ = nullptr;
  std::FILE* livePrint_ = nullptr;
  bool liveFrozen_ = false;
  bool liveDrawing_ = true;
};
