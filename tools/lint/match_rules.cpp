#include "tools/lint/match_rules.h"

#include <filesystem>

#include "match/give_points.h"
#include "tools/lint/game_folder.h"
#include "tools/lint/level_file.h"

namespace {

constexpr char kMatchLevel[] = "level1";
constexpr char kController[] = "segmentmanager";

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

MatchRules::MatchRules(const std::string& file, LintReport& report)
    : folder_(GameFolderOf(file)), level_(std::filesystem::path(file).filename().string()), report_(report) {}

void MatchRules::Check(const LintObject& object) {
  if (object.name == kController) CheckController(object);
  for (const LintBlock& script : object.scripts) {
    if (script.name == "SegmentManager") CheckSegments(script);
    if (script.name == "spawner") CheckSpawner(script);
  }
  if (const LintBlock* prize = object.Find("GivePoints")) CheckPrize(*prize);
}

void MatchRules::Finish() {
  if (level_ == kMatchLevel && !hasController_)
    report_.Fault(1, "no-controller", "the match needs an object " + Quoted(kController) + ", or it never ends");
}

void MatchRules::CheckController(const LintObject& object) {
  hasController_ = true;
  const LintBlock* segments = object.FindScript("SegmentManager");
  const LintBlock* objectives = object.FindScript("ObjectiveManager");
  if (segments == nullptr || objectives == nullptr)
    report_.Fault(object.line, "controller-scripts", "it must carry SegmentManager and then ObjectiveManager");
  else if (segments->line > objectives->line)
    report_.Fault(objectives->line, "controller-scripts", "it must stand after SegmentManager, or it starts too early");
  if (segments != nullptr && segments->segments.empty())
    report_.Fault(segments->line, "no-time", "without a segment the match never starts: add one");
}

void MatchRules::CheckSegments(const LintBlock& block) {
  for (const LintSegment& segment : block.segments) {
    const std::string_view piece = segment.levelName->value;
    if (piece == level_)
      report_.Fault(segment.levelName->number, "piece-of-itself", "a level cannot bring itself in: name another");
    else if (!HoldsAnObject(folder_, piece))
      report_.Fault(segment.levelName->number, "missing-piece", Quoted(piece) + " is missing here or holds no object");
    if (segment.duration != nullptr && NumberOf(*segment.duration) <= 0.0f)
      report_.Fault(segment.duration->number, "no-time", "a segment must last longer than 0 seconds");
  }
}

void MatchRules::CheckPrize(const LintBlock& prize) {
  const LintLine* points = ValueOf(&prize, "PointsGiven");
  const auto most = static_cast<float>(GivePoints::kMostPoints);
  if (points != nullptr && !(NumberOf(*points) >= 0.0f && NumberOf(*points) <= most))
    report_.Fault(points->number, "points-range", "must be 0 to 100: each hit makes up to that many bubbles");
  const LintLine* hits = ValueOf(&prize, "Hits To Break");
  if (hits != nullptr && NumberOf(*hits) < 0.0f)
    report_.Fault(hits->number, "negative-hits", "must be 0, which never breaks, or more");
}

void MatchRules::CheckSpawner(const LintBlock& spawner) {
  const LintLine* name = ValueOf(&spawner, "archtypename");
  if (name != nullptr && name->value == level_)
    report_.Fault(name->number, "archetype-of-itself", "the spawner would spawn itself without end: name another");
  else if (name != nullptr && !HoldsAnObject(folder_, name->value))
    report_.Fault(name->number, "missing-archetype", Quoted(name->value) + " is missing here or holds no object");
  if (const LintLine* rate = ValueOf(&spawner, "spawnrate"); rate != nullptr && !(NumberOf(*rate) > 0.0f))
    report_.Fault(rate->number, "spawn-rate", "must be above 0 seconds, or it spawns in every frame");
}
