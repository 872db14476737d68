// Looks for an output on a thread of its own, again and again, so that no frame waits for a device.
#pragma once

#include <future>
#include <memory>

#include "audio/studio/output.h"

namespace Studio {

class OutputWatch {
 public:
  /// Begins to look at once. A null opener never finds anything.
  explicit OutputWatch(OutputOpener opener);
  OutputWatch(const OutputWatch&) = delete;
  OutputWatch& operator=(const OutputWatch&) = delete;
  /// A look that does not come back within half a second is left to itself; what the opener needs must outlive it.
  ~OutputWatch();

  /// Ends the pause between two looks.
  void LookSoon() { updatesToNext_ = 0; }
  /// Once a system update while there is no output: one that was found since, or null.
  std::unique_ptr<Output> Poll();

 private:
  void BeginToLook();

  OutputOpener opener_;
  int updatesToNext_ = 0;
  std::future<std::unique_ptr<Output>> found_;
};

}  // namespace Studio
