#include "tools/lint/play/play_report.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "tools/lint/play/piece_cast.h"
#include "tools/lint/play/stay_watch.h"

namespace {

constexpr int kMostMore = 60;          // things beyond those at a piece's beginning
constexpr double kStunnedShare = 0.5;  // of the runs

std::string Place(double x, double y) {
  char text[64];
  std::snprintf(text, sizeof text, "(%.1f, %.1f)", x, y);
  return text;
}

std::string Seconds(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", seconds);
  return text;
}

std::string Player(double index) { return "player " + std::to_string(static_cast<int>(index) + 1); }

using Key = std::pair<int, int>;  // turn and object
Key KeyOf(const PlayNote& note) { return {note.piece, note.object}; }

template <class Act>
void ForEach(const std::vector<PlayNote>& notes, const char* kind, std::size_t numbers, const Act& act) {
  for (const PlayNote& note : notes)
    if (note.kind == kind && note.numbers.size() >= numbers) act(note);
}

}  // namespace

PlayReport::PlayReport(const PlayStage& stage, LintReport& report, const std::string& file, const std::string& folder,
                       std::FILE* out)
    : stage_(stage), report_(report) {
  for (int turn = 0; turn < stage.CountPieces(); ++turn) {
    Piece& piece = pieces_.emplace_back();
    const std::string path = stage.IsPiece() ? file : (std::filesystem::path(folder) / stage.GetName(turn)).string();
    piece.level = std::make_unique<LintLevel>(path);
    LintReport quiet(path, nullptr);
    ReadLevel(*piece.level, quiet);
    if (!stage.IsPiece()) piece.report = std::make_unique<LintReport>(path, out);
  }
}

bool PlayReport::Tell(const std::vector<PlayResult>& results) {
  Notes notes;
  std::size_t whole = 0;
  for (const PlayResult& result : results) {
    notes.insert(notes.end(), result.notes.begin(), result.notes.end());
    whole += result.whole ? 1 : 0;
  }
  if (whole < results.size())
    report_.Say(1, "not-played",
                std::to_string(results.size() - whole) + " of " + std::to_string(results.size()) +
                    " runs broke off: the game did not live through them, or took too long");
  std::stable_sort(notes.begin(), notes.end(),
                   [](const PlayNote& a, const PlayNote& b) { return KeyOf(a) < KeyOf(b); });
  TellStays(notes);
  TellStuns(notes, results.size());
  const bool givenUp =
      std::any_of(notes.begin(), notes.end(), [](const PlayNote& note) { return note.kind == NoteKind::kGivenUp; });
  TellThings(notes, givenUp);
  if (whole > 0 && !givenUp) TellRules(notes);
  TellCrowds(notes);
  TellSlow(notes);
  return report_.HasFaults() || std::any_of(pieces_.begin(), pieces_.end(), [](const Piece& piece) {
           return piece.report != nullptr && piece.report->HasFaults();
         });
}

void PlayReport::Say(int turn, int object, RuleName rule, const std::string& text) {
  if (!said_.insert({{turn, object}, std::string(rule.Get().name)}).second) return;
  const auto index = static_cast<std::size_t>(turn);
  if (index >= pieces_.size()) return;
  const auto& objects = pieces_[index].level->objects;
  const bool known = object >= 0 && static_cast<std::size_t>(object) < objects.size();
  LintReport& report = pieces_[index].report ? *pieces_[index].report : report_;
  report.Say(known ? objects[static_cast<std::size_t>(object)].line : 1, rule, text);
}

// A place is shut in when nobody in any run came away from any spot of it.
void PlayReport::TellStays(const Notes& notes) {
  std::set<std::pair<int, double>> left;
  ForEach(notes, NoteKind::kLeft, 0, [&](const PlayNote& note) {
    for (const double cell : note.numbers) left.insert({note.piece, cell});
  });
  std::set<Key> still;
  ForEach(notes, NoteKind::kStill, 4, [&](const PlayNote& note) {
    still.insert(KeyOf(note));
    Say(note.piece, note.object, "cannot-move",
        Player(note.numbers[0]) + " launched and stayed at " + Place(note.numbers[2], note.numbers[3]) + " for " +
            Seconds(note.numbers[1]) + " game seconds: make room there");
  });
  ForEach(notes, NoteKind::kShutIn, 4, [&](const PlayNote& note) {
    const bool passed = std::any_of(note.numbers.begin() + 4, note.numbers.end(), [&](double cell) {
      return left.contains({note.piece, cell});
    });
    if (passed || still.contains(KeyOf(note))) return;
    Say(note.piece, note.object, "no-way-out",
        "nobody comes away from " + Place(note.numbers[2], note.numbers[3]) + ": open a way or fill the place");
  });
}

void PlayReport::TellStuns(const Notes& notes, std::size_t runs) {
  std::map<std::pair<Key, int>, std::size_t> stunned;
  ForEach(notes, NoteKind::kStunned, 1, [&](const PlayNote& note) {
    const auto count = ++stunned[{KeyOf(note), static_cast<int>(note.numbers[0])}];
    if (static_cast<double>(count) >= kStunnedShare * static_cast<double>(runs))
      Say(note.piece, note.object, "stuns-at-once",
          "it stuns " + Player(note.numbers[0]) + " as soon as the piece comes: move it away");
  });
}

void PlayReport::TellThings(const Notes& notes, bool givenUp) {
  ForEach(notes, NoteKind::kGone, 2, [&](const PlayNote& note) {
    Say(note.piece, note.object, "leaves-the-stage",
        "it came through the walls, to " + Place(note.numbers[0], note.numbers[1]) +
            ": let it be a solid of a group above 0, and slower");
  });
  if (givenUp) return;  // too early to tell
  std::map<Key, double> rested;
  ForEach(notes, NoteKind::kRested, 1, [&](const PlayNote& note) { rested[KeyOf(note)] += note.numbers[0]; });
  for (const auto& [key, runs] : rested)
    if (runs == 0.0)
      Say(key.first, key.second, "never-rests",
          "it was not at rest for a quarter of a second in any run: give it room or damping");
  std::map<Key, double> hits;
  ForEach(notes, NoteKind::kPrize, 1, [&](const PlayNote& note) { hits[KeyOf(note)] += note.numbers[0]; });
  for (const auto& [key, count] : hits)
    if (count == 0.0) Say(key.first, key.second, "out-of-reach", "nobody hit it in any run: make a way to it");
}

int PlayReport::FindPrize(int turn) const {
  const auto& objects = pieces_[static_cast<std::size_t>(turn)].level->objects;
  const auto prize = std::find_if(objects.begin(), objects.end(),
                                  [](const LintObject& object) { return object.Find("GivePoints") != nullptr; });
  return prize == objects.end() ? PieceCast::kNobody : static_cast<int>(prize - objects.begin());
}

// Without a prize to blame it is what stands most in the way.
int PlayReport::FindBlamed(const Notes& notes, int turn) const {
  std::map<int, double> touched;
  ForEach(notes, NoteKind::kTouched, 1, [&](const PlayNote& note) {
    if (note.piece == turn) touched[note.object] += note.numbers[0];
  });
  const auto most = std::max_element(touched.begin(), touched.end(),
                                     [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == touched.end() ? PieceCast::kNobody : most->first;
}

// The rule of a single piece may run a second time beyond it.
void PlayReport::TellRules(const Notes& notes) {
  std::map<int, double> paid;
  ForEach(notes, NoteKind::kPaid, 1,
          [&](const PlayNote& note) { paid[stage_.IsPiece() ? 0 : note.piece] += note.numbers[0]; });
  for (const auto& [turn, points] : paid) {
    if (points > 0.0 || stage_.NameOfRule(turn) == "NULL") continue;
    const std::string text = "nobody gets a point under " + stage_.NameOfRule(turn) + " in any run";
    if (const int line = stage_.LineOfRule(turn); line > 0) {
      report_.Say(line, "pays-nobody", text);
      continue;
    }
    const int prize = FindPrize(turn);
    Say(turn, prize != PieceCast::kNobody ? prize : FindBlamed(notes, turn), "pays-nobody", text);
  }
}

void PlayReport::TellCrowds(const Notes& notes) {
  ForEach(notes, NoteKind::kMany, 2, [&](const PlayNote& note) {
    if (note.numbers[1] <= note.numbers[0] + kMostMore) return;
    Say(note.piece, note.object, "piles-up",
        "the piece has " + std::to_string(static_cast<int>(note.numbers[1])) + " things at a time, and " +
            std::to_string(static_cast<int>(note.numbers[0])) + " when it begins: let fewer come, or live shorter");
  });
  ForEach(notes, NoteKind::kLater, 1, [&](const PlayNote& note) {
    Say(note.piece, note.object, "piles-up",
        std::to_string(static_cast<int>(note.numbers[0])) + " things are still there " + Seconds(PlayStage::kAfter) +
            " game seconds after the piece: give them a DeathTimer");
  });
}

void PlayReport::TellSlow(const Notes& notes) {
  ForEach(notes, NoteKind::kSlow, 2, [&](const PlayNote& note) {
    if (note.numbers[0] < 30.0) return;
    int blamed = FindBlamed(notes, note.piece);
    ForEach(notes, NoteKind::kMany, 2, [&](const PlayNote& crowd) {
      if (crowd.piece == note.piece && crowd.numbers[1] > crowd.numbers[0] + kMostMore) blamed = crowd.object;
    });
    Say(note.piece, blamed, "slow-frames",
        std::to_string(static_cast<int>(note.numbers[0])) + " frames of a run take " + Seconds(note.numbers[1]) +
            " ms without the picture, of 16.7 that there are: fewer things, or farther apart");
  });
}
