// What one sub-step of the engine's physics costs, from real objects to resolved contacts.
//
//   physics_step                          every row, see MeasureAndPrint
//   physics_step N...                     the scaled arena with these numbers of bodies
//   physics_step instr engine N FRAMES    one scaled arena for callgrind (--instr-atstart=no): only FRAMES frames after
//                                         a warm-up of the same length are counted
#include <valgrind/callgrind.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bench/engine_world.h"
#include "core/print.h"

namespace {

using bench::ArenaSize;

constexpr char kSetting[] = "engine";

void CountInstructions(int count, int frames) {
  bench::EngineWorld world(bench::MakeArena(count, ArenaSize::kScaled));
  for (int i = 0; i < frames * bench::kStepsPerFrame; ++i) world.Step();
  CALLGRIND_START_INSTRUMENTATION;
  for (int i = 0; i < frames * bench::kStepsPerFrame; ++i) world.Step();
  CALLGRIND_STOP_INSTRUMENTATION;
}

void MeasureRow(int count, ArenaSize size) {
  bench::EngineWorld world(bench::MakeArena(count, size));
  bench::MeasureAndPrint(world, kSetting, size, count);
}

}  // namespace

int main(int argc, char** argv) {
  SetPrintTarget(stderr);
  if (argc == 5 && std::strcmp(argv[1], "instr") == 0 && std::strcmp(argv[2], kSetting) == 0) {
    CountInstructions(std::max(1, std::atoi(argv[3])), std::max(1, std::atoi(argv[4])));
    return 0;
  }
  if (argc > 1) {
    for (int i = 1; i < argc; ++i) {
      const int count = std::atoi(argv[i]);
      if (count < 1) {
        std::fprintf(stderr, "usage: physics_step [BODIES...] | instr %s BODIES FRAMES\n", kSetting);
        return 2;
      }
      MeasureRow(count, ArenaSize::kScaled);
    }
    return 0;
  }
  for (const int count : {16, 64, 256, 1024, 4096}) MeasureRow(count, ArenaSize::kScaled);
  for (const int count : {16, 64, 256}) MeasureRow(count, ArenaSize::kFixed);
  return 0;
}
