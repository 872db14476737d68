#include "tools/simulate/simulate.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "audio/audio.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "tools/simulate/run_check.h"
#include "tools/simulate/sound_recorder.h"
#include "tools/simulate/trace.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdout) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// What a run writes down, frame by frame; both may be missing.
struct Recorders final : RunObserver {
  std::optional<Trace> trace;
  std::optional<SoundRecorder> sound;
  std::optional<CheckingObserver> check;

  void BeginFrame(int frame) override {
    if (trace) trace->BeginFrame(frame);
  }
  void EndFrame(int frame) override {
    if (trace) trace->EndFrame();
    if (sound) sound->RecordFrame();
    if (check) check->EndFrame(frame);
  }
};

int TellCheck(const CheckingObserver& check) {
  if (!check.GetFault().empty()) {
    std::fprintf(stderr, "%s\n", check.GetFault().c_str());
    return 1;
  }
  std::printf("checked %d frames\n", check.CountFrames());
  return 0;
}

// A recording runs in a folder of links, which goes with the run.
bool SaveInDataFolder(const SimulateOptions& options) {
  std::error_code error;
  std::filesystem::current_path(options.dataFolder, error);
  return !error && Objects().SaveLevel(options.saveName);
}

}  // namespace

int Simulate(SimulateOptions options) {
  Audio::SilenceLibraries();
  SetPrintTarget(stderr);
  InputScript input;
  if (const int result = ReadInput(options, input); result != 0) return result;
  options.match = options.match || options.matches > 0;  // --matches starts matches by itself
  if (!options.match && !options.boot && options.level.empty())
    return RefuseUsage("what is run? --level, --match, --boot, or a recording as --input");
  if (options.frames < 0 && !options.untilEnd && options.matches == 0)
    return RefuseUsage("how long does it run? --frames, --until-end or --matches");
  const bool traceIsOutput = options.traceFile == "-";
  File traceFile;
  if (!options.traceFile.empty()) {
    traceFile.reset(traceIsOutput ? stdout : std::fopen(options.traceFile.c_str(), "w"));
    if (!traceFile) return FailFile(options.traceFile, "cannot be written");
  }
  Recorders recorders;
  if (!options.wavFile.empty() && !recorders.sound.emplace().Open(options.wavFile))
    return FailFile(options.wavFile, "cannot be written");
  if (const int result = EnterDataFolder(options, input); result != 0) return result;

  if (options.check) recorders.check.emplace(!recorders.sound.has_value());
  if (traceFile) recorders.trace.emplace(traceFile.get());
  GameRun run(options, std::move(input), traceIsOutput ? stderr : stdout,
              recorders.trace ? &*recorders.trace : nullptr);
  run.Start(recorders.sound || options.check ? Audio::Output::kLoopback : Audio::Output::kNone);
  int result = run.Go(recorders);
  if (result == kWrongUsage) return result;
  run.PrintDigest();
  if (recorders.check) result = std::max(result, TellCheck(*recorders.check));
  if (!options.saveName.empty() && !SaveInDataFolder(options))
    result = FailFile(options.saveName, "could not be saved in the data folder");
  if (recorders.sound && !recorders.sound->IsWhole())
    result = FailFile(options.wavFile, "could not be written to its end");
  run.PrintSummary();
  GameRun::Shutdown();
  return result;
}
