// Trying the level: into a match of its own and back, and to and fro in its time.
#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/print.h"
#include "editor/editor.h"
#include "match/rules/objective_factory.h"

namespace {

constexpr float kShortestTry = 1.0f;    // game seconds
constexpr float kLongestTry = 1000.0f;  // an hour of tape holds it
constexpr char kRefusal[] = "a try takes values alone: F9 goes back to the level, where this can be done";

// What of the bar over the picture changes what is on the stage, beside the buttons that read files anew.
constexpr std::string_view kLevelActs[] = {"Cut",    "Paste",     "Duplicate", "Copies across", "Copies upright",
                                           "Delete", "New level", "Recover"};
// What of the tools leaves it as it is.
constexpr std::string_view kHarmless[] = {"Undo", "Redo", "Load Texture"};

template <class Names>
bool IsOneOf(const Names& names, std::string_view name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

}  // namespace

// The input of the frame that follows is that of the try, or of the level that stands again.
void Editor::BetweenFrames() {
  Trial& trial = try_.trial;
  const TryState::Ask ask = std::exchange(try_.ask, TryState::Ask::kNothing);
  if (ask == TryState::Ask::kToggle) Do([this] { try_.trial.IsOn() ? EndTry() : StartTry(); });
  if (!trial.IsOn()) return;
  if (ask == TryState::Ask::kRestart) {
    KeepEdits();
    freeze_.Release();
    trial.Restart();
    try_.jump.reset();
    try_.scrubbed = false;
  }
  trial.BeginFrame();
  if (const std::optional<int> jump = std::exchange(try_.jump, std::nullopt)) {
    KeepEdits();
    trial.Jump(*jump);
  }
  if (try_.scrubbed && !try_.pulled) {
    freeze_.Set(try_.paceBefore);
    try_.scrubbed = false;
  }
}

// Beyond a jump nothing is undone: the level gets what has been set up to here.
void Editor::KeepEdits() {
  stageHand_.Stop(history_);
  try_.edits = EditsOfTry();
  history_.Clear();
  try_.seen = try_.kept = history_.GetState();
}

std::vector<ValueAct> Editor::EditsOfTry() const {
  std::vector<ValueAct> edits = try_.edits;
  auto acts = history_.GetValueActs();
  std::move(acts.begin(), acts.end(), std::back_inserter(edits));
  return edits;
}

void Editor::StartTry() {
  stageHand_.Stop(history_);
  history_.CloseStep();
  const bool unsaved = IsUnsaved();
  if (const std::string fault = try_.trial.Start(try_.wishes); !fault.empty()) {
    Print("%s\n", fault.c_str());
    return;
  }
  try_.unsaved = unsaved;
  try_.shown = IsShown();
  try_.history = std::exchange(history_, {});
  try_.freeze = std::exchange(freeze_, {});
  try_.loadedIds = std::exchange(loadedIds_, {});
  try_.edits.clear();
  try_.jump.reset();
  try_.scrubbed = try_.pulled = false;
  try_.seen = try_.kept = history_.GetState();
  history_.SetValueListener([this](const ValueChange& change) { try_.trial.Hear(change); });
  copies_.LeaveScene();
  carried_.clear();
  faults_.clear();  // they name objects of the level
  SetShown(false);
}

// What was edited in the try comes to the objects that it was made of, each act as one step.
void Editor::EndTry() {
  KeepEdits();
  SetShown(try_.shown);
  try_.trial.End();
  history_ = std::exchange(try_.history, {});
  freeze_ = std::exchange(try_.freeze, {});
  loadedIds_ = std::exchange(try_.loadedIds, {});
  stageHand_.Stop(history_);
  copies_.ReturnToScene([this](std::uint32_t id) { return try_.trial.ToLevel(id); });
  int lost = 0;
  const std::vector<ValueAct> edits = try_.trial.ForLevel(std::exchange(try_.edits, {}), lost);
  for (const ValueAct& act : edits) history_.Repeat(act);
  Print("back in the level\n");
  if (!edits.empty()) Print("it has got %zu edits of the try\n", edits.size());
  if (lost > 0) Print("%d edits of the try were of objects that are not the level's\n", lost);
}

// The slider holds the time until it is let go of, where the try then goes on.
void Editor::Scrub(bool done) {
  if (!try_.scrubbed) try_.paceBefore = freeze_.Get();
  try_.scrubbed = true;
  try_.pulled = !done;
  freeze_.Set(Freeze::Pace::kFrozen);
  try_.jump = static_cast<int>(std::lround(try_.moment * TryState::kFramesASecond));
}

bool Editor::RefusesInTry() {
  if (try_.trial.IsOn()) Do([] { Print("%s\n", kRefusal); });
  return try_.trial.IsOn();
}

// In a try nothing is made, loaded or saved: it could not be run again, and it is no level.
bool Editor::Refuses(const TweakBar& bar, const TweakBar::Entry& entry) {
  const bool changes = &bar == &properties_ || (&bar == &tools_ && !entry.row && !IsOneOf(kHarmless, entry.name)) ||
                       (&bar == &stage_ && (IsOneOf(kLevelActs, entry.name) || entry.name.starts_with("Reload")));
  return changes && entry.kind == TweakBar::Entry::Kind::kButton && RefusesInTry();
}

void Editor::FillTry() {
  const bool on = try_.trial.IsOn();
  stage_.AddButton("Play", on ? "Back (F9)" : "Play (F9)", [this] { try_.ask = TryState::Ask::kToggle; });
  stage_.GetLast().marked = on;
  stage_.GetLast().hint = "Tries the level as it stands as the piece of a match; the same again comes back to it";
  Field rule{"Rule", &try_.wishes.rule};
  rule.choices = {{0, "its own"}};
  for (const std::string_view name : ObjectiveNames())
    rule.choices.emplace_back(static_cast<int>(rule.choices.size()), name);
  stage_.Add(rule);
  stage_.GetLast().hint = "The rule of the match in which the level is tried";
  stage_.GetLast().hidden = on;
  stage_.Add("Pilots", &try_.wishes.pilots);
  stage_.GetLast().hint = "The computer flies player 1 too, unless a gamepad does";
  stage_.GetLast().hidden = on;
  stage_.AddLimited("Try Time", &try_.wishes.duration, kShortestTry, kLongestTry);
  stage_.GetLast().hint = "How long the piece lasts, in game seconds: 60 are about two minutes of the clock";
  stage_.GetLast().hidden = on;
  if (!on) return;
  if (!try_.scrubbed) try_.moment = static_cast<float>(try_.trial.GetRun()) / TryState::kFramesASecond;
  Field moment{"Moment", &try_.moment};
  moment.slides = true;
  moment.lowest = 0.0;
  moment.highest = static_cast<double>(try_.trial.GetRecorded()) / static_cast<double>(TryState::kFramesASecond);
  stage_.Add(moment);
  stage_.GetLast().hint =
      "Seconds of the clock since the try began: pull it back, and it goes on where it is let go of";
}
