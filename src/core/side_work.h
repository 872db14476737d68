// Work that takes longer than a frame may: on a thread of its own, or slice by slice in the frames where the platform
// has no threads.
#pragma once

#include <functional>
#include <memory>

class SideWork {
 public:
  /// Does one slice of the work, off the main thread perhaps; true when it was the last.
  using Slice = std::function<bool()>;

  SideWork();
  SideWork(const SideWork&) = delete;
  SideWork& operator=(const SideWork&) = delete;
  /// Ends as Finish does.
  ~SideWork();

  /// Begins; what went on before is finished first.
  void Start(Slice slice);
  /// Once a frame.
  void Update();
  /// Returns when all of it is done; at once when nothing was started.
  void Finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};
