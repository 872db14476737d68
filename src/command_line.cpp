#include "command_line.h"

#include <cstdio>
#include <string_view>

#include "core/version.h"

namespace {

constexpr int kWrongUsage = 2;

// The manual page is made of this text.
constexpr char kHelp[] =
    R"(Usage: brinewhirl [OPTION]

Brinewhirl is a party game for four players on one screen. Four octopuses hop
through a toy-box harbour: aim, hold the trigger to charge, let go and fly. What
brings points changes every few seconds and stands on a banner; a podium ends the
match. The computer flies for whoever is missing.

Options:
  -h, --help     print this text and exit
  --version      print the version and exit

Gamepad, up to four:
  left stick     aim
  right trigger  hold it to charge, let go to launch
  Start          the menu, and back
  A              press a button of the menu

Keyboard and mouse, the first player without a gamepad:
  left button    hold it to charge, let go to launch where the mouse points
  W A S D        hop at once; the arrow keys do the same
  P              the computer flies the first player too
  Escape         the menu, and back; there the arrow keys choose, Enter presses
  F1             the level editor over the running game

Files:
  $XDG_DATA_HOME/brinewhirl
                 what an installed game saves: levels, archetypes, autosaves and
                 recorded matches. It is ~/.local/share/brinewhirl where that is not
                 set. Levels, archetypes and pictures in there come before the
                 installed ones. A copy of the game's folder saves beside itself.
)";

}  // namespace

std::optional<int> AnswerArguments(int count, char* const arguments[]) {
  if (count < 2) return std::nullopt;
  const std::string_view first = arguments[1];
  if (count == 2 && (first == "--help" || first == "-h")) {
    std::fputs(kHelp, stdout);
    return 0;
  }
  if (count == 2 && first == "--version") {
    std::printf("brinewhirl %s\n", ProgramVersion());
    return 0;
  }
  std::fprintf(stderr, "brinewhirl takes no arguments but --help or --version: \"%s\"\n", arguments[count - 1]);
  return kWrongUsage;
}
