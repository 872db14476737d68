#include "graphics/viewport.h"

namespace {
// Single precision on purpose: in double 1920 / 1.7777778 falls just short of 1080 and a row is lost.
constexpr float kAspect = 1.7777778f;
}  // namespace

Viewport FitViewport(int windowWidth, int windowHeight) {
  const int fitHeight = static_cast<int>(static_cast<float>(windowWidth) / kAspect);
  const int fitWidth = static_cast<int>(static_cast<float>(windowHeight) * kAspect);
  if (fitWidth < windowWidth) return {(windowWidth - fitWidth) / 2, 0, fitWidth, windowHeight};
  return {0, (windowHeight - fitHeight) / 2, windowWidth, fitHeight};
}
