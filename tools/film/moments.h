// Finds in the log of a run what is worth a picture: each screen, piece, rule, stun and menu, and the podium.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/run_log.h"

class Moments final : public RunLogListener {
 public:
  Moments() = default;
  Moments(const Moments&) = delete;
  Moments& operator=(const Moments&) = delete;
  /// Whoever was told to listen before it is told no more.
  ~Moments() override { SetRunLogListener(nullptr); }

  /// Events from here on belong to this frame.
  void BeginFrame(int frame) { frame_ = frame; }
  void OnEvent(std::string_view text) override;

  /// Whether the present frame's picture is one of them, as far as is known. What turns up in the frame and is best
  /// seen at once has the frame drawn.
  bool IsDue() const;
  /// The names of those that this frame shows, for files: its number, then the event's words. They are done with.
  std::vector<std::string> TakeDue();
  /// Those that nobody has seen yet.
  std::size_t CountWaiting() const { return waiting_.size(); }

 private:
  struct Moment {
    int frame;  // that shows it
    std::string name;
  };
  int frame_ = 0;
  std::vector<Moment> waiting_;
};
