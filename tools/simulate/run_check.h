// What must hold after every frame of a run, whatever was pressed: numbers, places, points, and nothing that is left
// behind.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>

#include "match/players.h"
#include "tools/simulate/run.h"

class RunCheck {
 public:
  /// World units from the middle, along each axis. What breaks flies off for some 200 before it is removed.
  static constexpr float kFarthest = 2000.0f;
  static constexpr std::size_t kMostObjects = 20000;
  using Displays = std::array<std::uint32_t, kPlayers>;  ///< IDs

  /// After each frame: what does not hold, with the object and the numbers, or empty.
  std::string Check();

 private:
  std::string CheckPoints();

  std::optional<Displays> displays_;
  long long pointsBefore_ = 0;              // awarded and gone when the displays were new
  std::unordered_set<std::uint32_t> dead_;  // at the end of the frame before
};

/// Ends a run at the first frame in which something does not hold.
class CheckingObserver final : public RunObserver {
 public:
  /// `hears`: the run sounds into memory, and nobody else takes its sound.
  explicit CheckingObserver(bool hears) : hears_(hears) {}
  void EndFrame(int frame) override;
  /// The frame and what did not hold in it, or empty.
  const std::string& GetFault() const { return fault_; }
  int CountFrames() const { return frames_; }

 private:
  RunCheck check_;
  bool hears_;
  std::string fault_;
  int frames_ = 0;
};
