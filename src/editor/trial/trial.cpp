#include "editor/trial/trial.h"

#include "audio/audio.h"
#include "core/file_cache.h"
#include "core/object_manager.h"
#include "core/pause.h"
#include "core/print.h"
#include "core/scene_state.h"
#include "editor/acts/copies.h"
#include "graphics/background.h"
#include "graphics/camera.h"
#include "graphics/preload_list.h"
#include "match/episode/new_game.h"
#include "match/episode/segment_manager.h"
#include "match/match_controller.h"
#include "match/players.h"
#include "match/rules/objective_factory.h"
#include "physics/generator_host.h"
#include "screens/menu_system.h"
#include "screens/start_up.h"

namespace {

// Texts that stand for files.
constexpr char kPiece[] = "the level as it stands";
constexpr char kMatch[] = "the match it is tried in";
constexpr float kNoRipple = 100.0f;  // seconds since the last

// The rule's name; empty for the level's own.
std::string RuleOf(const TryWishes& wishes) {
  const auto names = ObjectiveNames();
  const auto index = static_cast<std::size_t>(wishes.rule);
  return index == 0 || index > names.size() ? std::string{} : std::string(names[index - 1]);
}

}  // namespace

std::string Trial::Start(const TryWishes& wishes) {
  if (GetStartUp().logoObject != 0 && !IsStartUpFinished()) return "the start-up screens come first: nothing is tried";
  std::vector<GameObject*> objects = ObjectsOfLevel();
  if (objects.empty()) return "there is nothing on the stage: nothing is tried";
  own_ = wishes.rule == 0 && HasController(objects);
  if (!own_) std::erase_if(objects, [](const GameObject* object) { return object->name == kMatchController; });
  wishes_ = wishes;
  levelText_ = TextOfLevel(objects);
  levelIds_.clear();
  for (const GameObject* object : objects) levelIds_.push_back(object->id);
  const std::string rule = RuleOf(wishes);
  KeepTextAsFile(kPiece, levelText_);
  KeepTextAsFile(kMatch, own_ ? levelText_ : MatchText(kPiece, rule.empty() ? "NULL" : rule, wishes.duration));
  while (!LoadNextAsset()) {
  }
  FinishStartUp();
  level_.screen = GetRenderer().GetScreen();
  level_.background = GetBackgroundPicture();
  level_.music = Audio::GetMusic();
  start_.screen.waveTime = kNoRipple;
  start_.screen.shader = "wave";
  start_.options = GetOptions();
  start_.pointer = Input::GetPointer();
  on_ = true;
  const float aspect = GetMainCamera()->GetAspect();
  ParkSceneState();
  BuildScene();
  Camera& camera = *GetMainCamera();
  camera.SetPerspective(camera.GetFov(), aspect, camera.GetNear(), camera.GetFar());
  return {};
}

// As a match begins in the game, but that it is known which objects are the level's.
void Trial::BuildScene() {
  Objects().BuildSpecialObjects();
  GetRenderer().SetScreen(start_.screen);
  GetOptions() = start_.options;
  Input::GetHeld() = {};
  Input::GetPointer() = start_.pointer;
  Input::ResetGamepads();
  SetDemoMode(wishes_.pilots);
  std::vector<std::uint32_t> made = NewGame(kMatch);
  toLevel_.clear();
  if (const SegmentManager* segments = FindSegmentManager(); !own_ && segments != nullptr)
    made = segments->GetPieceIds();
  // A copy of the generator host comes first, if there is one.
  for (std::size_t i = 0; made.size() >= levelIds_.size() && i < levelIds_.size(); ++i)
    toLevel_[made[made.size() - levelIds_.size() + i]] = levelIds_[i];
  at_ = 0;
}

void Trial::DestroyScene() {
  Menus().Reset();
  Objects().Reset();
  GalePhysics::ResetGeneratorHost();
}

void Trial::End() {
  if (!on_) return;
  const float aspect = GetMainCamera()->GetAspect();
  DestroyScene();
  ReturnSceneState();
  Camera& camera = *GetMainCamera();
  camera.SetPerspective(camera.GetFov(), aspect, camera.GetNear(), camera.GetFar());
  GetRenderer().SetScreen(level_.screen);
  SetBackgroundPicture(level_.background);
  for (int player = 0; player < Audio::kPlayers; ++player) Audio::StopCharge(player);
  Audio::SwitchMusic(level_.music);
  for (const char* name : {kPiece, kMatch}) ForgetCachedFile(name);
  tape_.Clear();
  on_ = jumped_ = false;
}

void Trial::Restart() {
  const Options options = GetOptions();
  const Input::Pointer pointer = Input::GetPointer();
  DestroyScene();
  RenewSceneState();
  tape_.Clear();
  jumped_ = false;
  start_.options = options;
  start_.pointer = pointer;
  BuildScene();
}

bool Trial::EndEvents(bool frozen, bool onBars) {
  const bool behind = at_ < tape_.GetLength();
  if (behind && frozen && !tape_.HasChanges()) {
    tape_.Drop();
    return false;
  }
  if (behind) tape_.Cut(at_);
  if (jumped_) tape_.BeginAt(before_);
  jumped_ = false;
  if (tape_.Record(frozen, onBars)) ++at_;
  return behind;
}

void Trial::Jump(int run) {
  target_ = run >= GetRecorded() ? tape_.GetLength() : tape_.FindRun(run);
  if (target_ == at_) return;
  BeginReplay();
  if (target_ > at_) return;
  const float aspect = GetMainCamera()->GetAspect();
  DestroyScene();
  RenewSceneState();
  BuildScene();
  Camera& camera = *GetMainCamera();
  camera.SetPerspective(camera.GetFov(), aspect, camera.GetNear(), camera.GetFar());
}

void Trial::BeginReplay() {
  if (replaying_) return;
  replaying_ = true;
  live_ = TakeInputState();
  liveFrozen_ = IsFrozen();
  livePlatform_ = &GetPlatform();
  liveLog_ = SetRunLogListener(nullptr);
  liveObserver_ = GalePhysics::SetStepObserver(nullptr);
  livePrint_ = SetPrintTarget(nullptr);
  Audio::SetHushed(true);
  liveDrawing_ = GetRenderer().SetDrawing(false);
  SetPlatform(platform_);
}

bool Trial::NextReplayed() {
  if (!replaying_) return false;
  if (at_ == target_) {
    EndReplay();
    return false;
  }
  const TapeFrame& frame = tape_.Get(at_);
  if (frame.before) {
    PutInputState(*frame.before);
    ReleasePauseWholly(kFocusLostReason);
  }
  platform_.Feed(frame);
  return true;
}

void Trial::EndReplayedEvents() {
  const TapeFrame& frame = tape_.Get(at_++);
  for (const ValueChange& change : frame.changes) GiveAgain(change);
  Input::GetPointer().onBars = frame.onBars;
  SetFrozen(frame.frozen);
}

// What the maker holds by now counts, not what was held then.
void Trial::EndReplay() {
  replaying_ = false;
  jumped_ = true;
  SetPlatform(*livePlatform_);
  PutInputState(live_);
  SetFrozen(liveFrozen_);
  ReleasePauseWholly(kFocusLostReason);
  GetRenderer().SetDrawing(liveDrawing_);
  SetRunLogListener(liveLog_);
  GalePhysics::SetStepObserver(liveObserver_);
  SetPrintTarget(livePrint_);
  Audio::SetHushed(false);
  ApplyMutes();
}

void Trial::SetFrozen(bool frozen) {
  if (frozen == IsFrozen()) return;
  frozen ? RequestPause(kFrozenReason) : ReleasePause(kFrozenReason);
}

std::vector<ValueAct> Trial::ForLevel(std::vector<ValueAct> acts, int& lost) const {
  for (ValueAct& act : acts) {
    for (ValueChange& change : act.changes) change.id = ToLevel(change.id);
    std::erase_if(act.changes, [](const ValueChange& change) { return change.id == 0; });
    lost += act.changes.empty() ? 1 : 0;
  }
  std::erase_if(acts, [](const ValueAct& act) { return act.changes.empty(); });
  return acts;
}

std::string Trial::OfLevelWith(const std::vector<ValueAct>& acts, const std::function<std::string()>& take) {
  ExchangeSceneState();
  std::vector<ValueChange> old;
  for (const ValueAct& act : acts)
    for (const ValueChange& change : act.changes) {
      GameObject* object = Objects().GetObject(change.id);
      if (object == nullptr) continue;
      ValueChange back = change;
      if (const auto value = FindValue(*object, change.path)) back.value = *value;
      back.after = TakeForm(*object);
      if (!GiveAgain(change)) continue;
      back.before = TakeForm(*object);
      old.push_back(std::move(back));
    }
  std::string taken = take();
  for (auto change = old.rbegin(); change != old.rend(); ++change) GiveAgain(*change);
  ExchangeSceneState();
  return taken;
}

std::uint32_t Trial::ToLevel(std::uint32_t id) const {
  const auto found = toLevel_.find(id);
  return found == toLevel_.end() ? 0 : found->second;
}
