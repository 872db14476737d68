// The bar of what is done to the scene as a whole.
#include <algorithm>
#include <iterator>

#include "core/file_cache.h"
#include "core/print.h"
#include "core/selection.h"
#include "editor/acts/arrange.h"
#include "editor/acts/object_shape.h"
#include "editor/editor.h"
#include "input/input.h"

namespace {

constexpr float kGridSteps[] = {0.0f, 0.5f, 1.0f, 2.0f};  // world units

const char* PaceText(Freeze::Pace pace) {
  switch (pace) {
    case Freeze::Pace::kFrozen:
      return "Time stands still";
    case Freeze::Pace::kSlow:
      return "One frame in four runs";
    case Freeze::Pace::kRunning:
      break;
  }
  return "Time runs";
}

}  // namespace

void Editor::TogglePace(Freeze::Pace pace) { freeze_.Set(freeze_.Get() == pace ? Freeze::Pace::kRunning : pace); }

void Editor::FillStage() {
  stageHand_.grid.step = kGridSteps[std::clamp(gridChoice_, 0, static_cast<int>(std::size(kGridSteps)) - 1)];
  stage_.RemoveAll();
  FillTry();
  FillTime();
  FillFiles();
  FillCopies();
  FillArrange();
  FillChanged();
}

void Editor::FillTime() {
  const auto addPace = [this](const char* name, const char* label, Freeze::Pace pace) {
    stage_.AddButton(name, label, [this, pace] { TogglePace(pace); });
    stage_.GetLast().marked = freeze_.Get() == pace;
  };
  const auto addSwitch = [this](const char* name, const char* label, bool on, std::function<void()> press) {
    stage_.AddButton(name, label, std::move(press));
    stage_.GetLast().marked = on;
  };
  addPace("Freeze", "Freeze (F2)", Freeze::Pace::kFrozen);
  stage_.AddButton("Step", "Step (F3)", [this] { freeze_.Step(); });
  addPace("Slow", "Slow (F4)", Freeze::Pace::kSlow);
  addSwitch("Objects", "Objects (F6)", list_.IsShown(), [this] { list_.Toggle(); });
  addSwitch("Browse", "Browse (F7)", browser_.IsShown(), [this] { browser_.Toggle(); });
  addSwitch("Keys", "Keys (F1 twice)", card_.IsShown(), [this] { card_.Toggle(); });
  addSwitch("Narrow", "Narrow", look_.narrow, [this] { look_.narrow = !look_.narrow; });
  addSwitch("Fold", "Fold (F8)", look_.folded, [this] { look_.folded = !look_.folded; });
  std::string state = PaceText(freeze_.Get());
  if (try_.trial.IsOn()) state += ". A try: values that are set here are set in the level too";
  if (IsUnsaved()) state += ". Unsaved changes";
  if (!carried_.empty()) state += ". Click where " + carried_ + " goes, Esc for nowhere";
  stage_.AddText(state);
}

void Editor::FillFiles() {
  stage_.AddButton("New level", [this] { NewLevel(); });
  stage_.AddButton("Reload", "Reload (F5)", [this] { Reload(fileName_); });
  stage_.GetLast().hint = "Loads FileName as it is on the disk now, unless lint finds faults in it";
  stage_.AddButton("Let bots play", [this] { PlayLevel(); });
  stage_.GetLast().hint = "Bots play a copy of the level; what spoils it is listed. Again: stop them";
  stage_.GetLast().marked = played_.IsRunning();
  for (const char* act : {"quit", "new game"}) {
    stage_.AddButton(std::string("Ask before: ") + act, [this, act] {
      SetShown(true);
      asked_ = act;
      askedNow_ = true;
      recovery_.PutAside(GetVersion(), [this] { return TextToKeep(); });
      Print("there are unsaved changes: save them, or once more for a %s without them\n", act);
    });
    stage_.GetLast().hidden = true;
  }
}

void Editor::FillCopies() {
  stage_.AddButton("Copy", [this] { Print("%s\n", copies_.Copy().c_str()); });
  stage_.AddButton("Cut", [this] { Print("%s\n", copies_.Cut(history_).c_str()); });
  stage_.AddButton("Paste", [this] { Paste(false); });
  stage_.AddButton("Duplicate", [this] { Print("%s\n", Copies::Duplicate(history_, CopyShift()).c_str()); });
  stage_.AddButton("Delete", [this] { Print("%s\n", Copies::Kill(history_).c_str()); });
  Field snap{"Snap", &gridChoice_};
  snap.choices = {{0, "off"}, {1, "0.5"}, {2, "1"}, {3, "2"}};
  stage_.Add(snap);
  stage_.GetLast().hint = "What is dragged, sized and pasted goes to this grid; Ctrl ignores it";
}

// Not shown while nothing is selected.
void Editor::FillArrange() {
  using namespace Arrange;
  const bool hidden = GetSelection().empty();
  const auto add = [&](const char* name, std::function<std::string(History&)> act) {
    stage_.AddButton(name, [this, act = std::move(act)] { Print("%s\n", act(history_).c_str()); });
    stage_.GetLast().hidden = hidden;
  };
  add("Turn left", [](History& history) { return Turn(history, Grid::kTurnStep); });
  add("Turn right", [](History& history) { return Turn(history, -Grid::kTurnStep); });
  add("Mirror across", [](History& history) { return Mirror(history, Axis::kAcross); });
  add("Mirror upright", [](History& history) { return Mirror(history, Axis::kUpright); });
  const auto addCopies = [&](const char* name, Axis axis) {
    add(name, [axis](History& history) { return Copies::DuplicateMirrored(history, axis); });
    stage_.GetLast().hint = "Copies of the selected objects, mirrored on the other side of the stage's middle";
  };
  addCopies("Copies across", Axis::kAcross);
  addCopies("Copies upright", Axis::kUpright);
  constexpr std::pair<const char*, Edge> kEdges[] = {{"Align left", Edge::kLeft},     {"Align centre", Edge::kCentre},
                                                     {"Align right", Edge::kRight},   {"Align top", Edge::kTop},
                                                     {"Align middle", Edge::kMiddle}, {"Align bottom", Edge::kBottom}};
  for (const auto& [name, edge] : kEdges) add(name, [to = edge](History& history) { return Align(history, to); });
  add("Spread across", [](History& history) { return Spread(history, Axis::kAcross); });
  add("Spread upright", [](History& history) { return Spread(history, Axis::kUpright); });
}

// Every file that was read can be offered; a recording that is played finds its button although nothing changes then.
void Editor::FillChanged() {
  for (const std::string& name : CachedFileNames()) {
    const auto& changed = watch_.GetChanged();
    const bool offered = std::find(changed.begin(), changed.end(), name) != changed.end();
    if (offered) stage_.AddText(name + " has changed on the disk");
    stage_.AddButton("Reload " + name, [this, name] { Reload(name); });
    stage_.GetLast().hidden = !offered;
  }
  const bool recovered = !recovery_.GetOffer().empty();
  if (recovered) stage_.AddText("The last run broke off with unsaved changes");
  stage_.AddButton("Recover", "Load " + recovery_.GetOffer(), [this] { OfferRecovered(); });
  stage_.GetLast().hidden = !recovered;
  stage_.AddButton("Leave it", [this] { recovery_.Dismiss(); });
  stage_.GetLast().hidden = !recovered;
}

// Beside what it is a copy of, on the grid.
Vec3 Editor::CopyShift() const {
  const float step = std::max(stageHand_.grid.step, 1.0f);
  return {step, -step, 0.0f};
}

void Editor::Paste(bool atMouse) {
  const Vec3 mouse = {Input::GetPointer().worldX, Input::GetPointer().worldY, 0.0f};
  std::vector<std::string> found;
  const auto at = atMouse ? std::optional(stageHand_.grid.Snapped(mouse)) : std::nullopt;
  const std::string said = copies_.Paste(history_, at, CopyShift(), found);
  faults_.clear();
  for (const std::string& line : found) faults_.push_back({line, 0});
  if (faults_.size() > kMaxFaults) faults_.resize(kMaxFaults);
  Print("%s\n", said.c_str());
}
