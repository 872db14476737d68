// No point is lost or made on its way: what was awarded since the displays were built is on them or in bubbles that
// fly to them.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "match/players.h"

class PointsCheck {
 public:
  /// After every frame. What is wrong, with the sums, or nothing. New displays begin a new count; without all four
  /// there is none.
  std::string EndFrame();

 private:
  bool HaveDisplays() const;
  void FindDisplays();
  long long CountShown() const;
  long long CountUnderWay() const;

  std::array<std::uint32_t, kPlayers> displays_{};  // IDs
  long long before_ = 0;                            // awarded before the count began
};
