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
#include "editor/files/level_files.h"
#include "tools/simulate/place_tables.h"
#include "tools/simulate/run_check.h"
#include "tools/simulate/scene_file.h"
#include "tools/simulate/sound_recorder.h"
#include "tools/simulate/trace.h"

namespace {

struct FileCloser {
  void operator()(std::FILE* file) const {
    if (file != stdout) std::fclose(file);
  }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Who looks on frame by frame; each may be missing.
struct Recorders final : RunObserver {
  std::optional<Trace> trace;
  std::optional<SoundRecorder> sound;
  std::optional<RunCheck> check;
  std::optional<PlaceTables> places;

  void BeginFrame(int frame) override {
    if (trace) trace->BeginFrame(frame);
  }
  void EndFrame(int frame) override {
    if (trace) trace->EndFrame();
    if (sound) sound->RecordFrame();
    if (check) check->EndFrame(frame);
    if (places) places->EndFrame(frame);
  }
};

// An exit code.
int TellChecked(const RunCheck& check, std::FILE* out) {
  if (!check.GetFault().empty()) {
    std::fprintf(stderr, "%s\n", check.GetFault().c_str());
    return 1;
  }
  std::fprintf(out, "checked %d frames\n", check.CountFrames());
  std::fflush(out);
  return 0;
}

// A recording runs in a folder of links, which goes with the run.
bool SaveInDataFolder(const SimulateOptions& options) {
  return EnterData(options).empty() && IsLevelOrNothing(options.saveName) && Objects().SaveLevel(options.saveName);
}

int SaveAll(const SimulateOptions& options, int frames) {
  int result = 0;
  if (!options.saveName.empty() && !SaveInDataFolder(options))
    result = FailFile(options.saveName, "could not be saved in the data folder");
  if (options.sceneFile.empty()) return result;
  if (!SaveScene(options.sceneFile)) return 1;
  if (frames < options.frames)
    std::fprintf(stderr, "%s: the run ended after %d frames, so this is their scene\n", options.sceneFile.c_str(),
                 frames);
  return result;
}

// Instances are counted where nothing is heard, too.
Audio::Output ChooseOutput(const Recorders& recorders) {
  if (recorders.sound) return Audio::Output::kLoopback;
  return recorders.check ? Audio::Output::kUnheard : Audio::Output::kNone;
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
  if (const int wrong = CheckPlayers(options, input); wrong != 0) return wrong;
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

  if (traceFile) recorders.trace.emplace(traceFile.get());
  if (options.check) recorders.check.emplace();
  std::FILE* out = traceIsOutput ? stderr : stdout;
  RunLogListener* log = recorders.trace ? &*recorders.trace : nullptr;
  if (options.places) log = &recorders.places.emplace(log);
  GameRun run(options, std::move(input), out, log);
  run.Start(ChooseOutput(recorders));
  int result = run.Go(recorders);
  if (result == kWrongUsage) return result;
  if (recorders.check) result = std::max(result, TellChecked(*recorders.check, out));
  if (recorders.places) recorders.places->Print(out);
  run.PrintDigest();
  result = std::max(result, SaveAll(options, run.GetFrames()));
  if (recorders.sound && !recorders.sound->IsWhole())
    result = FailFile(options.wavFile, "could not be written to its end");
  if (traceFile && (std::fflush(traceFile.get()) != 0 || std::ferror(traceFile.get()) != 0))
    result = FailFile(options.traceFile, "could not be written to its end");
  run.PrintSummary();
  GameRun::Shutdown();
  return result;
}
