#include "tools/record/record.h"

#include <unistd.h>

#include <cstdio>
#include <limits>

#include "core/print.h"
#include "editor/editor.h"
#include "tools/record/game_window.h"
#include "tools/record/kept_matches.h"
#include "tools/record/live_platform.h"
#include "tools/record/recorder.h"
#include "tools/simulate/run.h"

namespace {

// Whether there was a match at all.
struct MatchWatcher final : RunLogListener {
  bool played = false;
  void OnEvent(std::string_view text) override { played = played || text == "screen game"; }
};

// A place that takes nothing costs the recording, not the game.
void OpenKept(const KeptMatches& kept, Recorder& recorder) {
  if (const std::string file = kept.FindInterrupted(); !file.empty())
    Print("The game did not come to its end the last time; what it was given is in %s\n", file.c_str());
  const std::string file = kept.NextName();
  if (const std::string error = file.empty() ? "there is no folder for it" : recorder.Open(file); !error.empty())
    Print("This match is not recorded: %s\n", error.c_str());
}

}  // namespace

int Record(const RecordOptions& options) {
  Audio::SilenceLibraries();
  RunOptions run;
  run.dataFolder = options.dataFolder;
  run.boot = run.live = run.digest = true;
  run.frames = std::numeric_limits<int>::max();
  if (const int result = EnterDataFolder(run, {}); result != 0) return result;
  Recorder recorder;
  const KeptMatches matches(options.keep);
  if (options.keep > 0) OpenKept(matches, recorder);
  if (!options.file.empty())
    if (const std::string error = recorder.Open(options.file); !error.empty()) return FailFile(options.file, error);

  GameWindow window;
  MatchWatcher watcher;
  GameRun game(run, {}, stdout, &watcher);
  LivePlatform live(window.GetSystem(), game.GetGiven(), recorder);
  game.Start(Audio::Output::kDevice, &live);
  GetEditor().StartRecovery();
  RunObserver nobody;
  game.Go(nobody);
  const bool kept = recorder.IsOpen();
  recorder.Finish(game.GetFrames());
  const bool toSay = kept && (options.keep == 0 || watcher.played);
  if (kept && !toSay) ::unlink(recorder.GetFileName().c_str());
  if (options.keep > 0) matches.RemoveOldest();
  if (toSay) std::printf("recorded %s\n", recorder.GetFileName().c_str());
  game.PrintDigest();
  return 0;
}
