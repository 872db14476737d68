// What one run of a piece tells: short notes of numbers, which go from the process that plays to the one that reports.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct PlayNote {
  std::string kind;
  int piece = 0;    ///< turn in the match
  int object = -1;  ///< its place in the piece's file; -1: none
  std::vector<double> numbers;
};

/// Appends the note as a line: kind, piece, object, numbers.
void WriteNote(std::string& text, const PlayNote& note);
/// The notes of whole lines; what is no note is left out.
std::vector<PlayNote> ReadNotes(const std::string& text);

/// Kinds, and their numbers.
namespace NoteKind {
inline constexpr char kStill[] = "still";       ///< player, seconds, x, y: launched, and did not move
inline constexpr char kShutIn[] = "shut-in";    ///< player, seconds, x, y, cells of the stage: did not come away
inline constexpr char kLeft[] = "left";         ///< cells from which somebody came away
inline constexpr char kStunned[] = "stunned";   ///< player, x, y: as soon as the piece was there
inline constexpr char kPrize[] = "prize";       ///< hits of a thing of the file that gives points
inline constexpr char kRested[] = "rested";     ///< 1: it was at rest for a while, 0: not in all of the run
inline constexpr char kGone[] = "gone";         ///< x, y: it is outside the walls
inline constexpr char kPaid[] = "paid";         ///< points that were awarded while the rule of that turn ran
inline constexpr char kSlow[] = "slow";         ///< frames above the budget, the mean milliseconds of them
inline constexpr char kMany[] = "many";         ///< things of the piece at its beginning, at most
inline constexpr char kLater[] = "later";       ///< things of the piece that are there some time after it
inline constexpr char kGivenUp[] = "given-up";  ///< the run was broken off: it showed enough, and more is slow
inline constexpr char kTouched[] = "touched";   ///< contacts with anybody
}  // namespace NoteKind
