// The command line of the tool: what each command is called with, and nothing of what it does.
#include <CLI/CLI.hpp>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/data_place.h"
#include "core/file_name.h"
#include "core/out_of_memory.h"
#include "core/script_registry.h"
#include "core/version.h"
#include "lint/lint.h"
#include "script_table.h"
#include "tools/bank/bank_tool.h"
#include "tools/film/film.h"
#include "tools/lint/fix.h"
#include "tools/lint/play/play.h"
#include "tools/lint/reference.h"
#include "tools/record/record.h"
#include "tools/record/watch.h"
#include "tools/simulate/simulate.h"

namespace {

constexpr int kMostMatches = 100000;
constexpr int kMostKept = 1000;

std::string Absolute(const std::string& path) {
  std::error_code error;
  return std::filesystem::absolute(path, error).string();
}

// Absolute; empty for an empty name, which stands for the tool's own data.
std::string DataFolder(const std::string& given) { return given.empty() ? given : Absolute(given); }

std::string CheckPlainName(const std::string& name) {
  return IsPlainName(name) ? "" : "must be a plain name, without a folder";
}

std::string CheckLevelName(const std::string& name) {
  return IsLevelName(name) ? "" : "must be a plain name in the data folder, its examples/ or its autosaves/";
}

int PrintScripts() {
  RegisterAllScripts();
  for (const std::string_view name : RegisteredScriptNames())
    std::printf("%.*s\n", static_cast<int>(name.size()), name.data());
  return 0;
}

// What two commands share: which run, from which input.
struct RunGroups {
  CLI::Option_group* what;
  CLI::Option_group* howLong;
  CLI::Option* level;
  CLI::Option* boot;
};

void AddPlayers(CLI::App& command, RunOptions& options) {
  command.add_option_function<std::string>(
      "--bots",
      [&options](const std::string& text) {
        if (const std::string error = ParseBotKinds(text, options.bots); !error.empty())
          throw CLI::ValidationError("--bots", error);
      },
      "Who flies the four pads: hop, near, lead or none, as in lead,near,near,near, or one for all (page bots.md)");
  command.add_option_function<std::string>(
      "--mouse",
      [&options](const std::string& text) {
        const auto kind = BotKindFromName(text);
        if (!kind) throw CLI::ValidationError("--mouse", "a player is called hop, near, lead or none");
        options.mouse = *kind;
      },
      "Who flies player 1 by the mouse");
  command.add_option("--seed", options.seed, "Where the random numbers start (default: 10, as in the game)");
}

RunGroups AddRun(CLI::App& command, RunOptions& options) {
  command.add_option("--data", options.dataFolder, "A folder with the game's data (default: the tool's own)");
  auto* what = command.add_option_group("what to run");
  CLI::Option* level = what->add_option("--level", options.level, "Load one level into an empty scene");
  level->check(CheckLevelName);
  what->add_flag("--match", options.match, "Start a match");
  command.add_option("--stage", options.stageFile, "The match, or its only piece: a level file, from anywhere");
  CLI::Option* boot = what->add_flag("--boot", options.boot, "Begin with the start-up screens, as the game does");
  what->require_option(0, 1);
  auto* howLong = command.add_option_group("for how long");
  howLong->add_option("--frames", options.frames, "How many frames to run; 0 only loads")
      ->check(CLI::Range(0, std::numeric_limits<int>::max()));
  howLong->add_flag("--until-end", options.untilEnd, "Until the win screen waits for a button");
  command.add_flag("--pilots", options.pilots, "The computer flies player 1 too");
  command.add_option("--input", options.inputFile,
                     "Scripted input, one event a line, or a recording (page input-files.md)");
  command.add_flag("--digest", options.digest, "Print a hash of the final state");
  AddPlayers(command, options);
  return {what, howLong, level, boot};
}

void CompleteRun(RunOptions& options) {
  options.dataFolder = DataFolder(options.dataFolder);
  if (!options.stageFile.empty()) options.stageFile = Absolute(options.stageFile);
}

void AddSimulate(CLI::App& app, SimulateOptions& options, int& result) {
  CLI::App* command = app.add_subcommand("simulate", "Run the game without a window, as fast as it goes");
  const RunGroups run = AddRun(*command, options);
  run.howLong
      ->add_option("--matches", options.matches,
                   "That many whole matches, flown by pilots where no bot does, with tables")
      ->check(CLI::Range(1, kMostMatches))
      ->excludes(run.level)
      ->excludes(run.boot);
  CLI::Option* until = run.howLong->add_option("--until", options.frames,
                                               "As --frames; --save then leaves the scene as a level in this folder");
  until->check(CLI::Range(0, std::numeric_limits<int>::max()));
  run.howLong->require_option(0, 1);
  command->add_flag("--check", options.check,
                    "Check every frame (numbers, places, points, leaks); the first fault ends the run, exit 1");
  command->add_option("--trace", options.traceFile,
                      "Write contacts, overlaps, events and objects; - for standard output");
  CLI::Option* save = command->add_option("--save", options.saveName, "Save the level at the end under this name");
  save->check(CheckPlainName);
  until->needs(save);
  command->add_flag("--places", options.places, "Print where players were and were stunned in each piece");
  command->add_option("--wav", options.wavFile, "Write the run's sound: 16 bits, 48000 Hz, stereo");
  command->callback([&, until] {
    if (until->count() > 0) options.sceneFile = Absolute(std::exchange(options.saveName, {}));
    CompleteRun(options);
    result = Simulate(options);
  });
}

// Two numbers with an x between, each from 1 to `most`.
void AddPair(CLI::App& command, const std::string& name, int& first, int& second, int most, const std::string& help) {
  command.add_option_function<std::string>(
      name,
      [&first, &second, most, name](const std::string& text) {
        const char* end = text.data() + text.size();
        const auto one = std::from_chars(text.data(), end, first);
        const bool split = one.ec == std::errc{} && one.ptr != end && *one.ptr == 'x';
        const auto other = split ? std::from_chars(one.ptr + 1, end, second) : one;
        const bool whole = split && other.ec == std::errc{} && other.ptr == end;
        if (!whole || first < 1 || second < 1 || first > most || second > most)
          throw CLI::ValidationError(name, "must be two numbers from 1 to " + std::to_string(most) + ", as in 4x3");
      },
      help);
}

void AddFilm(CLI::App& app, FilmOptions& options, int& result) {
  CLI::App* command = app.add_subcommand("film", "Draw a run's frames without a window: pictures, a film, one sheet");
  AddRun(*command, options).howLong->require_option(0, 1);
  CLI::Option* out = command->add_option("--out", options.out,
                                         "Folder for PNG files, or FILE.webm, FILE.mp4, FILE.gif; a sheet's FILE.png");
  const auto frame = CLI::Range(0, kMostFrames);
  command->add_option("--from", options.from, "First frame, counted from 0")->check(frame);
  command->add_option("--to", options.to, "Last frame (default: the run's); ends the run too, if nothing else does")
      ->check(frame);
  command->add_option("--every", options.every, "One frame in so many")->check(CLI::Range(1, kMostFrames));
  command->add_option("--fps", options.rate, "Pictures a second (default: 30; GIF 15; PNG files 60)")
      ->check(CLI::Range(1, kFramesASecond));
  AddPair(*command, "--size", options.width, options.height, kLongestSide,
          "WxH of each picture (default: 1280x720; GIF 480x270; in a sheet 320x180)");
  command->add_flag("--coarse", options.coarse, "Draw at the pictures' own size: faster, but small things flicker");
  CLI::Option* sheet = command->add_flag("--moments", options.moments,
                                         "One PNG file of each screen, piece, rule, stun and menu, and of the podium");
  AddPair(*command, "--sheet", options.rows, options.columns, kLongestSide,
          "ROWSxCOLS of evenly spaced frames in one picture");
  command->add_flag("--times", options.times, "Measure only: how long frames take, with nothing written")
      ->excludes(sheet)
      ->excludes(out);
  command->callback([&] {
    CompleteRun(options);
    if (!options.out.empty()) options.out = Absolute(options.out);
    result = Film(options);
  });
}

void AddRecord(CLI::App& app, RecordOptions& options, int& result) {
  CLI::App* command = app.add_subcommand("record", "Play the game in its window and record it as an input file");
  command->add_option("FILE", options.file, "The recording; must not be there yet");
  command
      ->add_option("--keep", options.keep, "Keep the last so many matches in the folder matches/ of the data instead")
      ->check(CLI::Range(1, kMostKept))
      ->excludes("FILE");
  command->add_option("--data", options.dataFolder, "A folder with the game's data (default: the tool's own)");
  command->callback([&] {
    if (options.file.empty() && options.keep == 0) throw CLI::RequiredError("FILE or --keep");
    options.dataFolder = DataFolder(options.dataFolder);
    if (!options.file.empty()) options.file = Absolute(options.file);
    result = Record(options);
  });
}

void AddWatch(CLI::App& app, WatchOptions& options, int& result) {
  CLI::App* command = app.add_subcommand(
      "watch",
      "Play a recording back in the window. Space pauses, + and - double and halve the speed, the arrow keys jump ten "
      "seconds, Escape ends");
  command->add_option("FILE", options.inputFile, "The recording")->required();
  command->add_option("--from", options.from, "The first frame that is shown")->check(CLI::Range(0, kMostInputFrames));
  command->add_flag("--paused", options.paused, "Stand at the first frame that is shown");
  command->add_option("--data", options.dataFolder, "A folder with the game's data (default: the tool's own)");
  command->callback([&] {
    options.dataFolder = DataFolder(options.dataFolder);
    options.inputFile = Absolute(options.inputFile);
    options.digest = true;
    result = Watch(options);
  });
}

struct BankOptions {
  std::string spec;
  std::string sounds;
  std::string file;
  std::string event;
  std::string out;
};

void AddBank(CLI::App& app, BankOptions& options, int& result) {
  CLI::App* bank = app.add_subcommand(
      "bank", "Make sound banks and look into them: bank build SPEC OUT, bank list FILE, bank extract FILE EVENT OUT");
  bank->require_subcommand(1);
  CLI::App* build = bank->add_subcommand("build", "Make a bank and its strings bank");
  build->add_option("SPEC", options.spec, "One event a line: path, music or sfx, Ogg Vorbis file")->required();
  build->add_option("OUT", options.out, "The bank, NAME.bank; NAME.strings.bank is written beside it")->required();
  build->add_option("--sounds", options.sounds, "Where the Ogg files are (default: SPEC's folder)");
  build->callback([&] { result = BuildBank(options.spec, options.out, options.sounds); });
  CLI::App* list = bank->add_subcommand("list", "Print one line an event");
  list->add_option("FILE", options.file, "The bank")->required();
  list->callback([&] { result = ListBank(options.file, stdout); });
  CLI::App* extract = bank->add_subcommand("extract", "Write an event's sound as a 16-bit WAV file");
  extract->add_option("FILE", options.file, "The bank")->required();
  extract->add_option("EVENT", options.event, "The event's path")->required();
  extract->add_option("OUT", options.out, "The WAV file")->required();
  extract->callback([&] { result = ExtractFromBank(options.file, options.event, options.out); });
}

struct LintOptions {
  std::vector<std::string> files;
  std::string dataFolder;
  bool fix = false;
  bool play = false;
};

void AddLint(CLI::App& app, LintOptions& options, int& result) {
  CLI::App* lint = app.add_subcommand("lint", "Check levels and archetypes strictly");
  lint->add_option("FILE", options.files, "Level and archetype files")->required();
  CLI::Option* fix =
      lint->add_flag("--fix", options.fix, "First write each file as the game would save it: numbers, blanks and IDs");
  lint->add_flag("--play", options.play, "Play each file too, as a piece of a match, and report what shows then")
      ->excludes(fix);
  lint->add_option("--data", options.dataFolder, "The game's folder that the files belong to (default: their own)")
      ->excludes(fix);
  lint->callback([&] {
    if (!options.dataFolder.empty()) options.dataFolder = Absolute(options.dataFolder);
    LocateOwnData();
    if (options.play)
      result = PlayFiles(options.files, options.dataFolder, stdout);
    else
      result = options.fix ? FixFiles(options.files, stdout) : LintFiles(options.files, options.dataFolder, stdout);
  });
}

}  // namespace

// What CLI11 throws while the options are set up is a programming error; it may end the tool.
// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
  EndWhenOutOfMemory();
  CLI::App app("Brinewhirl's tool for level makers and tests", "brinewhirl-tool");
  app.require_subcommand(1);
  app.set_help_all_flag("--help-all", "Print the help of all commands and exit");
  app.set_version_flag("--version", std::string("brinewhirl-tool ") + ProgramVersion());
  int result = 0;
  SimulateOptions simulate;
  AddSimulate(app, simulate, result);
  FilmOptions film;
  AddFilm(app, film, result);
  RecordOptions record;
  AddRecord(app, record, result);
  WatchOptions watch;
  AddWatch(app, watch, result);
  BankOptions bank;
  AddBank(app, bank, result);
  LintOptions lint;
  AddLint(app, lint, result);
  app.add_subcommand("reference", "Print what every block of a level file holds, in Markdown")->callback([] {
    PrintReference(stdout);
  });
  app.add_subcommand("scripts", "Print the names of all behaviour scripts")->callback([&] { result = PrintScripts(); });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const std::string name = argc > 1 ? argv[1] : "";
    const bool isCommand =
        !app.get_subcommands([&](const CLI::App* command) { return command->check_name(name); }).empty();
    if (!name.empty() && name.front() != '-' && !isCommand) {
      std::fprintf(stderr, "brinewhirl-tool: there is no command \"%s\", --help lists them\n", name.c_str());
      return kWrongUsage;
    }
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  return result;
}
