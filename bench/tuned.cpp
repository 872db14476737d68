// Google Benchmark programs of the paths that are tuned, for comparing a change with what was before:
// --benchmark_filter=SubStep and the like choose one.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/engine_world.h"
#include "bench/level_text.h"
#include "bench/png_writer.h"
#include "bench/work_folder.h"
#include "build_world.h"
#include "core/file_cache.h"
#include "core/print.h"

namespace {

void SubStep(benchmark::State& state) {
  bench::EngineWorld world(bench::MakeArena(static_cast<int>(state.range(0)), bench::ArenaSize::kScaled));
  for (auto _ : state) world.Step();
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SubStep)->RangeMultiplier(4)->Range(16, 4096);

void ClearScene() {
  Objects().KillAll();
  Objects().RemoveDeadObjects();
}

// A stage as every match loads it.
class LevelFile : public benchmark::Fixture {
 public:
  void SetUp(benchmark::State& state) override {
    text_ = bench::MakeLevel(static_cast<int>(state.range(0)));
    std::filesystem::create_directory("Texture");
    bench::WritePng(std::filesystem::path("Texture") / bench::kPicture, 4, 4, bench::Bytes(4 * 4 * 4, 0x80));
    std::ofstream("level", std::ios::binary) << text_;
    BuildWorld();
  }
  void TearDown(benchmark::State&) override { Objects().Reset(); }

 protected:
  std::string text_;

 private:
  bench::WorkFolder folder_{"tuned"};
};

BENCHMARK_DEFINE_F(LevelFile, Load)(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    ClearScene();
    ClearFileCache();
    state.ResumeTiming();
    if (Objects().LoadLevel("level").size() != static_cast<std::size_t>(state.range(0)))
      state.SkipWithError("not every object was made");
  }
  ClearScene();
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text_.size()));
}
BENCHMARK_REGISTER_F(LevelFile, Load)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

BENCHMARK_DEFINE_F(LevelFile, Save)(benchmark::State& state) {
  Objects().LoadLevel("level");
  for (auto _ : state) Objects().SaveLevel("saved");
  ClearScene();
}
BENCHMARK_REGISTER_F(LevelFile, Save)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  SetPrintTarget(stderr);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
}
