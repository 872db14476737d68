// How fast the scene's time runs while it is edited: as in the game, not at all, or one frame in four. It goes by
// frames alone, so that a run from the same input is the same run. A pause of the game's own stays what it is.
#pragma once

class Freeze {
 public:
  enum class Pace { kRunning, kFrozen, kSlow };

  static constexpr int kSlowPeriod = 4;  ///< frames, of which one runs

  /// From the next Update on; the same pace again starts nothing anew.
  void Set(Pace pace);
  Pace Get() const { return pace_; }
  /// One frame runs, after which the scene is frozen.
  void Step();
  /// Once a frame, before it is known whether it runs.
  void Update();
  /// Whether it is held now.
  bool IsHolding() const { return held_; }
  /// The scene runs, and nothing is held.
  void Release();

 private:
  void Hold(bool held);

  Pace pace_ = Pace::kRunning;
  bool held_ = false;
  bool stepDue_ = false;
  int waited_ = 0;  // frames of the slow pace since the last that ran
};
