#include "core/platform.h"

#include "core/scripted_platform.h"

namespace {
Platform*& Current() {
  static ScriptedPlatform nothing;  // without window and devices, until somebody sets another
  static Platform* current = &nothing;
  return current;
}
}  // namespace

Platform& GetPlatform() { return *Current(); }
void SetPlatform(Platform& platform) { Current() = &platform; }
