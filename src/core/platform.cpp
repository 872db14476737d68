#include "core/platform.h"

namespace {
Platform*& Current() {
  static Platform nothing;
  static Platform* current = &nothing;
  return current;
}
}  // namespace

Platform& GetPlatform() { return *Current(); }
void SetPlatform(Platform& platform) { Current() = &platform; }
