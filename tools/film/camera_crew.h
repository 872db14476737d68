// Looks on at a run: has the frames that are filmed drawn and no other, reads them back, and hands pictures and sound
// to the output.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <vector>

#include "tools/film/moments.h"
#include "tools/film/output.h"
#include "tools/film/progress.h"
#include "tools/film/schedule.h"
#include "tools/simulate/run.h"

/// How pictures are taken: sizes in pixels, drawn `scale` times as large.
struct Lens {
  int width = 0;
  int height = 0;
  int scale = 1;
};

class CameraCrew final : public RunObserver {
 public:
  /// Without `output` frames are drawn and nothing else; with `moments` they choose, and not the schedule. Not owned.
  CameraCrew(const Lens& lens, const Schedule& schedule, Moments* moments, Output* output, bool sound, int total)
      : lens_(lens), schedule_(schedule), moments_(moments), output_(output), sound_(sound), progress_(total) {}

  void BeginFrame(int frame) override;
  void EndFrame(int frame) override;

  /// The run is over: the line that tells how far it is goes.
  void EndProgress() { progress_.End(); }
  /// Somebody asked the program to end, which ended the run.
  bool IsInterrupted() const { return interrupted_; }
  int CountPictures() const { return static_cast<int>(times_.size()); }
  /// Milliseconds in which that share of the filmed frames was through, from their input to their last pixel.
  double TimeOf(double share) const;

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kSamplesAFrame = 2 * Audio::kRate / kFramesASecond;

  void TakePicture(int frame);

  Lens lens_;
  Schedule schedule_;
  Moments* moments_;
  Output* output_;
  bool sound_;
  bool interrupted_ = false;
  Progress progress_;
  Clock::time_point frameStart_;
  std::vector<double> times_;  // milliseconds
  std::array<std::int16_t, kSamplesAFrame> stereo_{};
};
