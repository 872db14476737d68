// Watches the things of a piece: whether they come to rest, leave the stage, are hit, and pile up.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/game_object.h"
#include "tools/lint/play/piece_cast.h"

class ThingWatch {
 public:
  explicit ThingWatch(PieceCast& cast) : cast_(cast) {}

  /// A piece begins, whose cast is there.
  void Begin(int turn);
  /// After every frame of the piece.
  void EndFrame();
  /// The piece's time is over; appends the notes.
  void End(std::string& text);
  /// Some time after that; for a piece after which nothing came.
  void EndLater(std::string& text) const;
  /// Things that are there now beyond those at the beginning.
  int CountMore() const { return living_ - began_; }
  /// Somebody met something.
  void OnTouch(std::uint32_t thing, bool byPlayer);

 private:
  struct Thing {
    int index;
    float since;          // game time
    float still = 0.0f;   // game seconds of rest at a stretch
    bool rested = false;  // or has not been there long enough to tell
    bool inside = false;  // has been within the walls
    bool gone = false;
    Vec3 gonePlace;
  };
  void Look(const GameObject& object, int index);

  PieceCast& cast_;
  int turn_ = 0;
  int began_ = 0;   // things at the beginning
  int living_ = 0;  // now
  int most_ = 0;
  std::unordered_map<std::uint32_t, Thing> things_;  // that move, and should stay
  std::unordered_set<std::uint32_t> strays_;         // that need not
  std::vector<int> hits_;                            // by index, of prizes by players
  std::vector<int> touches_;                         // by index, of anything by anybody
};
