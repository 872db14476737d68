// Levels that come, go and change on the disk, and what must not be lost by it.
#include <algorithm>
#include <charconv>

#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/selection.h"
#include "editor/editor.h"
#include "editor/files/level_files.h"
#include "lint/level_file.h"
#include "lint/lint.h"

namespace {

// The number behind "FILE:"; 0 when there is none.
int LineNumberOf(const std::string& line, const std::string& file) {
  int number = 0;
  if (line.size() > file.size() && line.starts_with(file))
    std::from_chars(line.data() + file.size() + 1, line.data() + line.size(), number);
  return number;
}

// The live object that a line of the file is about: by its place in the file when it was loaded from there, else by the
// ID that it was saved under. 0 for none.
std::uint32_t ObjectOfLine(const LintLevel& level, int line, const std::vector<std::uint32_t>& ids) {
  const LintObject* object = nullptr;
  for (const LintObject& candidate : level.objects)
    if (candidate.line <= line) object = &candidate;
  if (object == nullptr) return 0;
  std::uint32_t id = 0;
  if (const auto index = static_cast<std::size_t>(object - level.objects.data()); index < ids.size())
    id = ids[index];
  else
    std::from_chars(object->id.data(), object->id.data() + object->id.size(), id);
  return Objects().GetObject(id) == nullptr ? 0 : id;
}

}  // namespace

bool Editor::MayLose(const std::string& act) {
  if (try_.trial.IsReplaying()) return true;
  if (try_.trial.IsOn() && act == "new game") {
    try_.ask = TryState::Ask::kRestart;
    return false;
  }
  if (!IsUnsaved() || asked_ == act) {
    asked_.clear();
    MarkSaved();
    return true;
  }
  const std::string path = "stage/Ask before: " + act;
  hand_ == nullptr ? static_cast<void>(PressAt(path)) : hand_->Press(path);
  return false;
}

// The same for what is done on the bars themselves, where the line stands beside the button. A duration that was typed
// alone is no reason to ask whoever loads another level.
bool Editor::MayLoseBy(const std::string& act) {
  const bool loses = IsUnsaved() && history_.GetState() != saved_.state;
  asked_ = asked_ == act || !loses ? std::string{} : act;
  askedNow_ = true;
  if (asked_.empty()) return true;
  Print("there are unsaved changes: press %s again to lose them\n", act.c_str());
  return false;
}

void Editor::NewLevel() {
  if (!MayLoseBy("New level")) return;
  for (const auto& object : Objects().GetObjects())
    if (!object->core) object->alive = false;
  ClearSelection();
  loadedIds_.clear();
  loadedName_.clear();
  faults_.clear();
  fileName_ = "Enter File Name Here";
  history_.Clear();
  MarkSaved();
  freeze_.Set(Freeze::Pace::kFrozen);
  Print("a new level: the stage is empty\n");
}

// A level that is on the stage is loaded; of another file the next that reads it gets what it holds now.
void Editor::Reload(const std::string& name) {
  LintLevel level(name);
  LintReport quiet(name, nullptr);
  std::vector<std::string> lines;
  const bool good = ReadLevel(level, quiet) && LintLevelText(name, level.text, lines);
  if (!good) {
    ShowFaults(name, lines, name == loadedName_ ? loadedIds_ : std::vector<std::uint32_t>{});
    Print("%s has faults: what was read before stays\n", name.c_str());
    return;
  }
  if (name == loadedName_ || name == fileName_) {
    if (!MayLoseBy("Reload")) return;
    fileName_ = name;
    TakeLevel(name);
    return;
  }
  ForgetCachedFile(name);
  watch_.Accept(name);
  Print("%s is read anew from now on\n", name.c_str());
}

void Editor::ShowFaults(const std::string& name, const std::vector<std::string>& lines,
                        const std::vector<std::uint32_t>& ids) {
  faults_.clear();
  LintLevel level(name);
  LintReport quiet(name, nullptr);
  ReadLevel(level, quiet);
  for (const std::string& line : lines) {
    if (faults_.size() < kMaxFaults) {
      faults_.push_back({line, ObjectOfLine(level, LineNumberOf(line, name), ids)});
      continue;
    }
    faults_.push_back({"and more: brinewhirl-tool lint " + name, 0});
    break;
  }
}

// The offer stays until something was loaded: it may be the only copy.
void Editor::OfferRecovered() {
  const std::string offered = recovery_.GetOffer();
  if (!MayLoseBy("Load " + offered)) return;
  TakeLevel(offered);
  saved_ = {};  // it is in no level of the maker's own
  fileName_ = "Enter File Name Here";
  loadedName_.clear();
  if (!loadedIds_.empty()) recovery_.Dismiss();
}

// What was edited in a try comes to the level at its end, unless the game ends first.
bool Editor::IsUnsaved() const {
  if (!try_.trial.IsOn()) return GetVersion() != saved_;
  return try_.unsaved || !try_.edits.empty() || history_.GetState() != try_.kept;
}

// What a copy of unsaved work holds. A try is put aside as the level that it tries, with what was edited in it.
std::string Editor::TextToKeep() {
  const auto text = [this] { return TextWithDuration(levelDuration_); };
  if (!try_.trial.IsOn()) return text();
  int lost = 0;
  return try_.trial.OfLevelWith(try_.trial.ForLevel(EditsOfTry(), lost), text);
}

// What is chosen by sight goes where the page was opened for, else where the tools have such a thing.
void Editor::Choose(Browser::Page page, const std::string& name) {
  if (const std::string target = browser_.GetTarget(); !target.empty()) {
    const std::string fault = SetAt(target, name, true);
    if (!fault.empty()) Print("%s\n", fault.c_str());
    browser_.Close();
    return;
  }
  if (page != Browser::Page::kPictures && RefusesInTry()) return;
  switch (page) {
    case Browser::Page::kPictures:
      textureName_ = name;
      break;
    case Browser::Page::kScripts:
      AddScript(name);
      break;
    case Browser::Page::kComponents:
      AddComponent(name);
      break;
    case Browser::Page::kArchetypes:
      archetypeName_ = carried_ = name;
      Print("click where %s goes\n", name.c_str());
      break;
  }
}
