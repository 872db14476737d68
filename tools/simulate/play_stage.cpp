#include "tools/simulate/play_stage.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "core/file_name.h"
#include "lint/level_rules.h"
#include "lint/number.h"
#include "tools/simulate/data_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr char kController[] = "segmentmanager";
constexpr char kPiece[] = "played-piece";  // under a name that is none in the game's folder
constexpr char kNothing[] = "nothing-more";
constexpr float kFirstSection = 10.0f;  // game seconds of a match's first rule, whatever it is
constexpr char kIndent[] = "\t\t\t\t";

// An object at the origin, open for further components.
std::string ObjectText(int id, const std::string& name) {
  return "\t" + std::to_string(id) + ": {\n\t\tName: " + name +
         "\n\t\tCore: false\n"
         "\t\tComponent: \"Transform\" {\n"
         "\t\t\tComponent: \"Vec3\" {\n\t\t\t\tx_: 0\n\t\t\t\ty_: 0\n\t\t\t\tz_: 0\n\t\t\t}\n"
         "\t\t\tComponent: \"Vec3\" {\n\t\t\t\tr_: 1\n\t\t\t\ti_: 0\n\t\t\t\tj_: 0\n\t\t\t\tk_: 0\n\t\t\t}\n"
         "\t\t\tComponent: \"Matrix34\" {\n"
         "\t\t\t\t: 1\n\t\t\t\t: 0\n\t\t\t\t: 0\n\t\t\t\t: 0\n\t\t\t\t: 1\n\t\t\t\t: 0\n\t\t\t\t: 0\n\t\t\t\t: "
         "0\n\t\t\t\t: 1\n"
         "\t\t\t\tComponent: \"Vec3\" {\n\t\t\t\t\tx_: 0\n\t\t\t\t\ty_: 0\n\t\t\t\t\tz_: 0\n\t\t\t\t}\n\t\t\t}\n"
         "\t\t\tComponent: \"Vec3\" {\n\t\t\t\tx_: 1\n\t\t\t\ty_: 1\n\t\t\t\tz_: 0\n\t\t\t}\n\t\t}\n";
}

std::string NumberText(float number) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", static_cast<double>(number));
  return text;
}

const LintObject* FindController(const LintLevel& level) {
  for (const LintObject& object : level.objects)
    if (object.name == kController && object.HasScript("SegmentManager") && object.HasScript("ObjectiveManager"))
      return &object;
  return nullptr;
}

// The values of a rule are the lines from its name to the next one's.
std::string ValuesOf(const LintLevel& level, int line, int next) {
  std::string text;
  for (const LintLine& value : level.lines)
    if (value.number > line && value.number < next && value.kind == LintLine::Kind::kValue)
      text += kIndent + std::string(value.key) + ": " + std::string(value.value) + "\n";
  return text;
}

bool HasPrize(const LintLevel& level, LevelFolder& folder) {
  return std::any_of(level.objects.begin(), level.objects.end(), [&](const LintObject& object) {
    if (object.Find("GivePoints") != nullptr) return true;
    const LintLine* name = ValueOf(object.FindScript("spawner"), "archtypename");
    const LintLevel* archetype = name == nullptr ? nullptr : folder.Find(name->value);
    return archetype != nullptr && archetype->GetFirst()->Find("GivePoints") != nullptr;
  });
}

// As its last object's name tells.
float OwnDuration(const LintLevel& level) {
  float duration = 0.0f;
  const bool told = !level.objects.empty() && ParsesWhole(level.objects.back().name, duration) && duration > 0.0f;
  return told ? duration : PlayStage::kDuration;
}

std::string Put(const std::string& name, const std::string& text) {
  std::error_code error;
  fs::remove(name, error);
  std::ofstream file(name, std::ios::binary);
  file << text;
  file.close();
  return file ? std::string{} : "cannot be written in the temporary folder";
}

}  // namespace

std::string PlayStage::Read(const std::string& file, const std::string& data) {
  file_ = file;
  data_ = data;
  LintLevel level(file);
  LintReport quiet(file, nullptr);
  if (!ReadLevel(level, quiet) || level.objects.empty()) return "there is nothing to play";
  if (quiet.IsUnreadable()) return "it is not played until the lines above are mended";
  if (const LintObject* controller = FindController(level)) {
    match_ = true;
    ReadMatch(*controller->FindScript("SegmentManager"), *controller->FindScript("ObjectiveManager"));
    return pieces_.empty() ? "there is no piece to play" : std::string{};
  }
  pieces_.emplace_back(kPiece);
  duration_ = OwnDuration(level);
  LevelFolder folder(data);
  ReadPiece(folder);
  if (rules_.empty()) rules_.push_back({HasPrize(level, folder) ? "HitObjects" : "CollectTheRings", {}});
  return {};
}

void PlayStage::ReadMatch(const LintBlock& segments, const LintBlock& objectives) {
  for (const LintSegment& segment : segments.segments) {
    pieces_.emplace_back(segment.levelName->value);
    duration_ += NumberOf(*segment.duration);
  }
  for (const LintBlock& objective : objectives.objectives)
    rules_.push_back({std::string(objective.name), {}, objective.line});
}

// What the folder's match does with a piece of this name.
void PlayStage::ReadPiece(LevelFolder& folder) {
  const std::string name = fs::path(file_).filename().string();
  const LintLevel* match = folder.Find(kMatchLevel);
  const LintObject* controller = match == nullptr ? nullptr : FindController(*match);
  if (controller == nullptr) return;
  const auto& segments = controller->FindScript("SegmentManager")->segments;
  const auto& objectives = controller->FindScript("ObjectiveManager")->objectives;
  for (std::size_t turn = 0; turn < segments.size() && turn < objectives.size(); ++turn) {
    if (segments[turn].levelName->value != name) continue;
    const bool last = turn + 1 == objectives.size();
    const int next = last ? match->lines.back().number : objectives[turn + 1].line;
    std::string values = ValuesOf(*match, objectives[turn].line, next);
    if (last) values.erase(std::min(values.find(std::string(kIndent) + "No more objectives"), values.size()));
    rules_.push_back({std::string(objectives[turn].name), std::move(values)});
    duration_ = NumberOf(*segments[turn].duration);
    placing_ = ValuesOf(*match, segments[turn].duration->number, segments[turn].duration->number + 3);
    return;
  }
}

std::string PlayStage::MatchText() const {
  std::string text = "{\n" + ObjectText(1, kController) + "\t\tComponent: \"ScriptBox\" {\n";
  text += "\t\t\tComponent: \"SegmentManager\" {\n\t\t\t\tnumber of segments: 2\n";
  text +=
      std::string(kIndent) + "levelName_: " + kPiece + "\n" + kIndent + "duration_: " + NumberText(duration_) + "\n";
  text += placing_;
  text += std::string(kIndent) + "levelName_: " + kNothing + "\n" + kIndent +
          "duration_: " + NumberText(kAfter + 1.0f) + "\n" + kIndent + "rotationAngle_: 0\n" + kIndent +
          "distance_: 0\n";
  text += std::string(kIndent) + "SentinelSegment: NoMoreSegments\n\t\t\t}\n";
  text += "\t\t\tComponent: \"ObjectiveManager\" {\n\t\t\t\tSections: 2\n";
  const std::string rule = std::string(kIndent) + "Objective: " + rules_[0].name + "\n" + rules_[0].values;
  text += rule + (duration_ > kFirstSection ? rule : std::string(kIndent) + "Objective: NULL\n");
  text += std::string(kIndent) + "No more objectives: Done\n\t\t\t}\n\t\t}\n\t}\n}\n";
  return text;
}

std::string PlayStage::Enter() const {
  std::error_code error;
  fs::current_path(data_, error);
  if (error) return "its folder cannot be entered";
  if (std::string fault = EnterOverlay(); !fault.empty()) return fault;
  const std::string name = match_ ? kMatchLevel : kPiece;
  fs::remove(name, error);
  fs::create_symlink(file_, name, error);
  if (error) return error.message();
  if (match_) return {};
  if (std::string fault = Put(kNothing, "{\n" + ObjectText(1, kNothing) + "\t}\n}\n"); !fault.empty()) return fault;
  return Put(kMatchLevel, MatchText());
}

int PlayStage::LineOfRule(int turn) const {
  const auto index = static_cast<std::size_t>(turn);
  return index < rules_.size() ? rules_[index].line : 0;
}

std::string PlayStage::NameOfRule(int turn) const {
  const auto index = static_cast<std::size_t>(turn);
  return index < rules_.size() ? rules_[index].name : "";
}
