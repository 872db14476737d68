// A run of the game without window, device or sleeping: what to run, from which input, for how long. Every command that
// runs the game does it through this, so the same options give the same run.
#pragma once

#include <cstdio>
#include <string>
#include <utility>

#include "audio/audio.h"
#include "core/random.h"
#include "core/scripted_platform.h"
#include "frame.h"
#include "game_events.h"
#include "tools/bots/bot_seats.h"
#include "tools/simulate/input_script.h"
#include "tools/simulate/match_recorder.h"

inline constexpr int kFramesASecond = 60;
inline constexpr int kMostFrames = 200000;  ///< of a match that does not end
inline constexpr int kWrongUsage = 2;       ///< exit code

struct RunOptions {
  std::string dataFolder;  ///< absolute; empty: the program's own data
  std::string stageFile;   ///< absolute; it is the match, or the match's only piece; empty: the folder's match
  std::string level;       ///< one level into an empty scene; empty: one of the two below
  bool match = false;
  bool boot = false;                ///< begin with the start-up screens
  bool pilots = false;              ///< the computer flies player 1 too
  int frames = -1;                  ///< -1: as many as a recording has
  bool untilEnd = false;            ///< instead of a number of frames: until the win screen waits for a button
  int matches = 0;                  ///< above 0: that many whole matches one after the other
  std::string inputFile;            ///< empty: none
  bool digest = false;              ///< print a hash of the final state
  BotKinds bots{};                  ///< who flies the pads
  BotKind mouse = BotKind::kNone;   ///< who flies the first seat by the mouse
  std::uint32_t seed = kFirstSeed;  ///< of the game's random stream, and of the bots' own
  bool live = false;                ///< a window's events come by GetGiven, after the editor's bars have had theirs

  bool HasBots() const { return bots != BotKinds{} || mouse != BotKind::kNone; }
};

/// Who looks on, frame by frame. Frames count from 0.
class RunObserver {
 public:
  virtual ~RunObserver() = default;
  /// Before the frame's input; also before a further match is set up, which belongs to the frame after it.
  virtual void BeginFrame(int /*frame*/) {}
  virtual void EndFrame(int /*frame*/) {}
};

/// Says on standard error what is wrong with a file; gives the exit code 1.
int FailFile(const std::string& name, const std::string& why);

/// Says on standard error how the tool was called wrongly; gives the exit code 2.
int RefuseUsage(const char* why);

/// Reads the input file, if there is one, whose name is meant relative to the present folder. A recording says itself
/// what is run and for how long, if the options do not. An exit code: 2 for a wrong line.
int ReadInput(RunOptions& options, InputScript& input);

/// Whether bots and seed go with what is run and with what the input file moves. An exit code.
int CheckPlayers(const RunOptions& options, const InputScript& input);

/// Enters the data folder, or the program's own data. What went wrong, or empty.
std::string EnterData(const RunOptions& options);

/// The same, and looks for the level there. An exit code. For a recording it is a folder of links to it,
/// in which the run may save what it likes; that the data are others is told in a line.
int EnterDataFolder(const RunOptions& options, const InputScript& input);

class GameRun {
 public:
  /// Tables and summary go to `out`; `log` hears the run's events, null for none. Only `input` is taken over.
  GameRun(const RunOptions& options, InputScript input, std::FILE* out, RunLogListener* log)
      : options_(options), input_(std::move(input)), out_(out), match_(log) {}

  /// The same steps as the game's start. Without `window`, which hands on what the run is given, there is none. A GL
  /// context, if there shall be one, is there already.
  void Start(Audio::Output output, Platform* window = nullptr);
  /// Runs all frames. An exit code: 1 when a match does not end, 2 when the editor has not what an input line asks for.
  int Go(RunObserver& observer);
  /// The next frame alone, for whoever has a loop of their own; false, and nothing, when there is none.
  bool Step(RunObserver& observer);
  /// The digest, if it was asked for.
  void PrintDigest() const;
  /// The summary, and the ranking after a match.
  void PrintSummary() const;
  /// Ends what the start began.
  static void Shutdown();

  int GetFrames() const { return done_; }
  /// What the run stands on, or what stands behind its window.
  ScriptedPlatform& GetGiven() { return platform_; }

 private:
  bool RunAll();
  void RunFrame();
  bool PlayToTheEnd();
  bool PlayMatches();

  const RunOptions& options_;
  InputScript input_;
  std::FILE* out_;
  ScriptedPlatform platform_;
  BotSeats bots_{options_.bots, options_.mouse, options_.seed};
  std::string inputError_;  // of the input line that ended the run
  MatchRecorder match_;
  GameEvents events_{!options_.live && !input_.IsRecording()};
  Frame frame_{events_};
  RunObserver* observer_ = nullptr;  // during Go
  int done_ = 0;
  double wallSeconds_ = 0.0;
};
