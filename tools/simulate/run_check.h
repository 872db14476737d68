// Looks after every frame of a run whether what must always hold still does: finite numbers, objects within reach,
// sums of points, nothing left behind. It changes nothing of the run but its end.
#pragma once

#include <string>

#include "tools/simulate/leak_check.h"
#include "tools/simulate/points_check.h"
#include "tools/simulate/run.h"

class RunCheck final : public RunObserver {
 public:
  /// Ends the run at the first frame with a fault.
  void EndFrame(int frame) override;

  /// The frame, the object if it is one, and what is wrong with which numbers; empty when nothing is.
  const std::string& GetFault() const { return fault_; }
  /// How many frames were found to be in order.
  int CountFrames() const { return frames_; }

 private:
  std::string FindFault();

  PointsCheck points_;
  LeakCheck leaks_;
  std::string fault_;
  int frames_ = 0;
};
