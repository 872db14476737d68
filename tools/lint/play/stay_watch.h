// Watches where the players stay although they launch: at one spot, or within a place that they do not come away from.
#pragma once

#include <array>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "match/players.h"
#include "physics/math/vec3.h"

class StayWatch {
 public:
  static constexpr float kStillTime = 3.0f;   ///< game seconds
  static constexpr float kStillReach = 0.5f;  ///< world units within which one has not moved
  static constexpr int kStillLaunches = 3;    ///< of which none brought one away
  static constexpr float kShutTime = 3.5f;    ///< game seconds
  static constexpr float kShutReach = 2.5f;   ///< world units within which one has not come away
  static constexpr int kShutLaunches = 4;

  /// A piece begins; `text` gets the notes of this turn from now on and must outlive the watch.
  void Begin(int turn, std::string& text);
  /// The piece's time is over.
  void End();
  /// After every frame. Nothing before the first Begin.
  void EndFrame();
  void OnLaunch(int player);
  /// The player met something that belongs to the file's object of that index.
  void OnTouch(int player, int index);
  /// The player has been put elsewhere.
  void OnMoved(int player);

 private:
  // As long as a player is no farther than `reach` from where it began.
  struct Stay {
    bool begun = false;
    Vec3 from;
    float since = 0.0f;  // game time
    int launches = 0;
    std::map<int, int> touches;  // by index
    std::set<int> cells;
    void Restart(const Vec3& place);
    int MostTouched() const;
  };
  struct Watched {
    Stay still;
    Stay shut;
  };

  void Follow(int player, const Vec3& place);
  void CloseStill(int player);
  void CloseShut(int player, bool cameAway);
  void Note(const char* kind, int player, const Stay& stay, float seconds);

  std::array<Watched, kPlayers> players_;
  std::set<int> left_;
  int turn_ = 0;
  std::string* text_ = nullptr;
};
