// Writes down what happens in a run, as it happens: contacts, overlaps, events, and every object at a frame's end.
#pragma once

#include <cstdio>
#include <string_view>

#include "core/run_log.h"
#include "physics/step.h"

class Trace final : public GalePhysics::StepObserver, public RunLogListener {
 public:
  /// Listens from now on and writes to `out`, which is not owned, until it goes.
  explicit Trace(std::FILE* out);
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;
  ~Trace() override;

  /// Events from here on belong to this frame.
  void BeginFrame(int frame) { frame_ = frame; }
  /// Writes every object in list order.
  void EndFrame();

  void OnContact(int subStep, const GalePhysics::Contact& contact) override;
  void OnCollision(int subStep, const CollisionPair& pair) override;
  void OnEvent(std::string_view text) override;

 private:
  std::FILE* out_;
  int frame_ = 0;
};
