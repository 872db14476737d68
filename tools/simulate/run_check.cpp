#include "tools/simulate/run_check.h"

#include <cmath>

#include "core/game_time.h"
#include "core/object_manager.h"
#include "core/platform.h"
#include "tools/simulate/number_check.h"
#include "tools/simulate/object_name.h"

namespace {

std::string Say(const GameObject& object, const std::string& fault) {
  return fault.empty() ? fault : NameOf(object) + ": " + fault;
}

// Clocks that run backwards or not at all stop every timer. Slow motion brings the step near 0, never below.
std::string CheckClocks() {
  const GameTime& time = Time();
  if (std::isfinite(time.elapsedTime) && std::isfinite(time.frameStep) && time.frameStep >= 0.0f) return {};
  return "the clock stands at " + std::to_string(time.elapsedTime) + " s and adds " + std::to_string(time.frameStep) +
         " s a frame";
}

std::string CheckNumbers() {
  for (const auto& object : Objects().GetObjects()) {
    std::string fault = FindWrongNumber(*object);
    if (fault.empty()) fault = FindFarPlace(*object);
    if (!fault.empty()) return Say(*object, fault);
  }
  // The mouse may be as far outside the window as it likes.
  std::string fault = Say(Objects().GetCursor(), FindWrongNumber(Objects().GetCursor()));
  if (fault.empty()) fault = Say(Objects().GetCamera(), FindWrongNumber(Objects().GetCamera()));
  return fault;
}

}  // namespace

void RunCheck::EndFrame(int frame) {
  if (!fault_.empty()) return;
  const std::string fault = FindFault();
  if (fault.empty()) {
    ++frames_;
    return;
  }
  fault_ = "frame " + std::to_string(frame) + ": " + fault;
  GetPlatform().running = false;
}

std::string RunCheck::FindFault() {
  std::string fault = CheckClocks();
  if (fault.empty()) fault = CheckNumbers();
  if (fault.empty()) fault = points_.EndFrame();
  if (fault.empty()) fault = leaks_.EndFrame();
  return fault;
}
