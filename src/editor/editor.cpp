#include "editor/editor.h"

#include "core/object_manager.h"
#include "core/platform.h"
#include "core/print.h"
#include "core/script_registry.h"
#include "core/selection.h"
#include "core/transform.h"
#include "editor/acts/object_shape.h"
#include "editor/bars/object_fields.h"
#include "editor/hints.h"
#include "editor/stage/outlines.h"
#include "graphics/renderer.h"
#include "input/input.h"

namespace {

constexpr std::size_t kMaxStatusLines = 6;

// Lines printed while an action runs.
std::vector<std::string>& Heard() {
  static std::vector<std::string> heard;
  return heard;
}

void Hear(std::string_view text) {
  while (!text.empty() && text.back() == '\n') text.remove_suffix(1);
  if (!text.empty()) Heard().emplace_back(text);
}

std::string PathOf(const TweakBar& bar, const std::string& path) { return bar.GetName() + path; }

const TweakBar::Entry* FindPath(const TweakBar& bar, const std::string& path) {
  for (const TweakBar::Entry& entry : bar.GetEntries())
    if (entry.path == path) return &entry;
  return nullptr;
}

// "before "label"after"
std::string Telling(std::string_view before, std::string_view label, std::string_view after = {}) {
  std::string text(before);
  text += '"';
  text += label;
  text += '"';
  text += after;
  return text;
}

}  // namespace

Editor& GetEditor() {
  static Editor editor;
  return editor;
}

void Editor::Init() {
  if (try_.trial.IsOn()) EndTry();
  view_.Shutdown();
  Input::GetPointer().onBars = false;
  fileName_ = "Enter File Name Here";
  archetypeName_ = "Enter Archetype Name Here";
  textureName_ = "Enter Texture Name Here";
  levelDuration_ = 5.0f;
  scriptName_ = "Enter Script Name here";
  componentToAdd_ = gridChoice_ = autosaveCount_ = 0;
  for (std::string* text : {&find_, &asked_, &loadedName_, &carried_}) text->clear();
  loadedIds_.clear();
  status_.clear();
  faults_.clear();
  look_ = {};
  list_.Reset();
  browser_.Reset();
  card_.Reset();
  watch_.Reset();
  recovery_ = {};
  played_.Stop();
  stageHand_.grid = {};
  stageHand_.Stop(history_);
  history_.Clear();
  MarkSaved();
  freeze_.Release();
  FillBars();
}

void Editor::Shutdown() {
  if (try_.trial.IsOn()) EndTry();
  view_.Shutdown();
  recovery_.End();
  played_.Stop();
}

void Editor::SetShown(bool shown) {
  if (shown == IsShown()) return;
  view_.SetShown(shown);
  GetPlatform().ShowPointer(shown);
  Input::GetPointer().onBars = shown;
  if (!shown) {
    paceBefore_ = freeze_.Get();
    freeze_.Set(Freeze::Pace::kRunning);
  }
  stageHand_.Stop(history_);
  history_.CloseStep();
}

// Under the freeze nothing else takes away what an act has killed; a death may bring another one.
void Editor::SweepKilled() {
  constexpr int kMostSweeps = 8;
  for (int sweep = 0; acted_ && freeze_.IsHolding() && sweep < kMostSweeps; ++sweep) Objects().RemoveDeadObjects();
  acted_ = false;
}

std::vector<BarWindow> Editor::Windows() {
  using Site = BarWindow::Site;
  std::vector<BarWindow> windows = {{"options", {&tools_}, Site::kLeft},
                                    {"GaleEditor", {&common_, &properties_}, Site::kRight},
                                    {"stage", {&stage_}, Site::kTop, true}};
  // The card takes the room of the two others.
  if (card_.IsShown()) windows.push_back({"keys", {&card_.GetBar()}, Site::kCard, true});
  if (list_.IsShown() && !card_.IsShown()) windows.push_back({"objects", {&list_.GetBar()}, Site::kBottom, true});
  if (browser_.IsShown() && !card_.IsShown()) windows.push_back({"browse", {&browser_.GetBar()}, Site::kMiddle, true});
  return windows;
}

// With the list open everything that lies outside the picture is marked, else what is selected.
std::vector<StageLine> Editor::Lines(const WindowRect& window) const {
  std::vector<std::uint32_t> marked = GetSelection();
  if (list_.IsShown())
    for (const auto& object : Objects().GetObjects())
      if (!object->core) marked.push_back(object->id);
  return stageHand_.Draw(StageView(window.width, window.height), marked);
}

// The bars are filled anew in every shown frame: fields move and go with the scene, and nothing else runs between the
// filling and the last use of them.
void Editor::Update() {
  Trial& trial = try_.trial;
  if (trial.IsReplaying()) return trial.EndReplayedEvents();
  card_.Update();
  if (IsShown()) {
    stageHand_.Update(history_);
    watch_.Update();
    pictureFaults_.Update();
    FillBars();
    const WindowRect window = GetPlatform().GetWindowRect();
    const BarActions actions = view_.Run(Windows(), Lines(window), look_, window.width, window.height);
    hand_ == nullptr ? Perform(actions) : HandOn(actions);
  }
  HearOfPlayed();
  recovery_.Update(IsUnsaved() ? std::optional(GetVersion()) : std::nullopt, [&] { return TextToKeep(); });
  // What is edited in a try stands still, so that its recording holds all of it.
  const bool edited = std::exchange(try_.seen, history_.GetState()) != history_.GetState();
  if (trial.IsOn() && (stageHand_.IsChanging() || edited)) freeze_.Set(Freeze::Pace::kFrozen);
  freeze_.Update();
  if (trial.IsOn()) trial.EndEvents(freeze_.IsHolding(), IsShown());
  SweepKilled();
}

void Editor::HandOn(const BarActions& actions) {
  for (const BarActions::Edit& edit : actions.edits)
    if (const auto* entry = FindPath(*edit.bar, edit.path))
      hand_->Set(PathOf(*edit.bar, edit.path), TextOf(entry->field, edit.value), edit.done);
  for (const BarActions::Press& press : actions.presses) hand_->Press(PathOf(*press.bar, press.path));
}

void Editor::Perform(const BarActions& actions) {
  for (const BarActions::Edit& edit : actions.edits)
    if (const auto* entry = FindPath(*edit.bar, edit.path)) ApplyEdit(*edit.bar, *entry, edit.value, edit.done);
  for (const BarActions::Press& press : actions.presses) {
    FillBars();
    const auto* entry = FindPath(*press.bar, press.path);
    if (entry != nullptr && entry->press) PressButton(*press.bar, *entry);
  }
}

const TweakBar* Editor::FindBarOf(std::string_view label, const TweakBar::Entry** entry) const {
  for (const TweakBar* bar : AllBars())
    if ((*entry = bar->Find(label)) != nullptr) return bar;
  return nullptr;
}

void Editor::Draw() {
  const Renderer& renderer = GetRenderer();
  if (IsShown() && renderer.IsDrawing()) view_.Draw(renderer.GetPictureWidth(), renderer.GetPictureHeight());
}

const TweakBar* Editor::FindBarAt(std::string_view path, const TweakBar::Entry** entry) const {
  for (const TweakBar* bar : AllBars())
    for (const TweakBar::Entry& candidate : bar->GetEntries())
      if (PathOf(*bar, candidate.path) == path) {
        *entry = &candidate;
        return bar;
      }
  return nullptr;
}

std::string Editor::Press(std::string_view label) {
  FillBars();
  const TweakBar::Entry* entry = nullptr;
  const TweakBar* bar = FindBarOf(label, &entry);
  return PressEntry(bar, entry, label);
}

std::string Editor::PressAt(std::string_view path) {
  FillBars();
  const TweakBar::Entry* entry = nullptr;
  const TweakBar* bar = FindBarAt(path, &entry);
  return PressEntry(bar, entry, path);
}

std::string Editor::PressEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label) {
  if (bar == nullptr || !entry->press) return Telling("the bars have no button ", label);
  PressButton(*bar, *entry);
  return {};
}

std::string Editor::Set(std::string_view label, std::string_view value) {
  FillBars();
  const TweakBar::Entry* entry = nullptr;
  const TweakBar* bar = FindBarOf(label, &entry);
  return SetEntry(bar, entry, label, value, true);
}

std::string Editor::SetAt(std::string_view path, std::string_view value, bool done) {
  FillBars();
  const TweakBar::Entry* entry = nullptr;
  const TweakBar* bar = FindBarAt(path, &entry);
  return SetEntry(bar, entry, path, value, done);
}

std::string Editor::SetEntry(const TweakBar* bar, const TweakBar::Entry* entry, std::string_view label,
                             std::string_view value, bool done) {
  if (bar == nullptr || entry->kind != TweakBar::Entry::Kind::kVariable)
    return Telling("the bars have no variable ", label);
  if (entry->field.readOnly) return Telling("", label, " can only be read");
  FieldValue parsed;
  if (!ParseValue(entry->field, value, parsed)) return Telling("", value, " is no value for ") + std::string(label);
  ApplyEdit(*bar, *entry, parsed, done);
  return {};
}

std::string Editor::Get(std::string_view label) {
  FillBars();
  const TweakBar::Entry* entry = nullptr;
  const bool isVariable = FindBarOf(label, &entry) != nullptr && entry->kind == TweakBar::Entry::Kind::kVariable;
  if (!isVariable) return {};
  return entry->mixed ? "mixed" : TextOf(entry->field);
}

// The object that an entry belongs to; null for an entry of the tools.
const Editor::ObjectRange* Editor::FindObjectOf(const TweakBar& bar, const TweakBar::Entry& entry) const {
  if (&bar != &properties_) return nullptr;
  const auto index = static_cast<std::size_t>(&entry - bar.GetEntries().data());
  for (const ObjectRange& range : ranges_)
    if (index >= range.first && index < range.end) return &range;
  return nullptr;
}

// A step of the history names what it was done with as it stands on a bar of its object alone, where a copy has its old
// value.
void Editor::ApplyEdit(const TweakBar& bar, const TweakBar::Entry& entry, const FieldValue& value, bool done) {
  asked_.clear();
  if ((&bar == &common_ || &bar == &properties_) && stageHand_.IsChanging()) stageHand_.Stop(history_);
  if (&bar == &common_) return ApplyCommonEdit(entry, value, done);
  const FieldValue before = GetValue(entry.field);
  SetValue(entry.field, value);
  if (entry.field.slides) Scrub(done);
  const ObjectRange* range = FindObjectOf(bar, entry);
  GameObject* object = range == nullptr ? nullptr : Objects().GetObject(range->id);
  if (object == nullptr) return;
  TweakBar alone("object");
  AddObjectFields(alone, *object);
  object->GetTransform().Rebuild();  // a save before the next update writes the matrix too
  const auto index = static_cast<std::size_t>(&entry - bar.GetEntries().data());
  const TweakBar::Entry& recorded = alone.GetEntries()[index - range->first];
  history_.RecordEdit(range->id, recorded.path, before, GetValue(recorded.field), !done);
}

// The tools record what they do by themselves. Of an object's buttons those are recorded that put something into a
// list.
void Editor::PressButton(const TweakBar& bar, const TweakBar::Entry& entry) {
  if (Refuses(bar, entry)) return;
  const ObjectRange* range = FindObjectOf(bar, entry);
  GameObject* object = range == nullptr ? nullptr : Objects().GetObject(range->id);
  if (object == nullptr || !entry.insertion.insert) {
    const std::function<void()> press = entry.press;  // a copy, since it may empty the bar that holds it
    Do(press);
    return;
  }
  TweakBar alone("object");
  AddObjectFields(alone, *object);
  const auto index = static_cast<std::size_t>(&entry - bar.GetEntries().data());
  const TweakBar::Entry& recorded = alone.GetEntries()[index - range->first];
  Do([&] { history_.DoInsertion(*object, recorded.path, recorded.insertion); });
}

void Editor::Say(const std::function<std::string()>& action) {
  Do([&] { Print("%s\n", action().c_str()); });
}

// What is pulled at is let go of first, so that it is a step of its own before this one, which nothing joins later.
void Editor::Do(const std::function<void()>& action) {
  stageHand_.Stop(history_);
  history_.CloseStep();
  Heard().clear();
  SetPrintListener(Hear);
  askedNow_ = false;
  action();
  acted_ = true;
  SetPrintListener(nullptr);
  if (!askedNow_) asked_.clear();
  status_ = Heard();
  if (status_.size() > kMaxStatusLines) status_.erase(status_.begin(), status_.end() - kMaxStatusLines);
}

void Editor::FillBars() {
  FillTools();
  FillProperties();
  FillCommon();
  FillStage();
  list_.Fill(loadedIds_, [this](std::uint32_t id) { stageHand_.Ring(id); });
  browser_.Fill([this](Browser::Page page, const std::string& name) { Choose(page, name); });
}

void Editor::FillProperties() {
  properties_.RemoveAll();
  ranges_.clear();
  for (GameObject* object : SelectedObjects()) {
    properties_.BeginGroup(object->name.empty() ? "Nameless-Object" : object->name);
    const std::size_t first = properties_.GetEntries().size();
    AddObjectFields(properties_, *object);
    ranges_.push_back({object->id, first, properties_.GetEntries().size()});
    properties_.EndGroup();
  }
  AddHints(properties_);
  pictureFaults_.Tell(properties_);
  OfferPages(properties_, properties_.GetName(), browser_);
}
