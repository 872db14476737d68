#include "match/rules/objective_manager.h"

#include <algorithm>
#include <string>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/run_log.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite_text.h"
#include "input/input.h"
#include "match/episode/segment_manager.h"
#include "match/rules/objective_factory.h"

namespace {

constexpr float kFirstSection = 10.0f;    // game seconds, whatever the first rule says
constexpr float kCountdownTime = 3.0f;    // game seconds before the end of a section
constexpr float kDigitsPerSecond = 2.0f;  // of game time, which is about one a second of real time
constexpr float kDigitScale = 0.06f;      // world units a pixel of a fresh digit, which then shrinks to nothing
constexpr float kHiddenScale = 0.02f;
constexpr char kTypeKey[] = "Objective";
constexpr char kEndKey[] = "No more objectives";

std::unique_ptr<Objective> ReadObjective(Serializer& reader) {
  const std::string type = reader.ReadString();
  if (auto objective = CreateObjective(type)) {
    objective->Deserialize(reader);
    return objective;
  }
  Print("%s: no objective is called \"%s\", nothing happens in its place\n", reader.Where().c_str(), type.c_str());
  // Its values are unknown too: the next rule's key ends them.
  while (reader.NextIsValue() && reader.NextKey() != kTypeKey && reader.NextKey() != kEndKey) reader.ReadString();
  return CreateObjective("NULL");
}

// A count that lies loses no rule and invents none.
bool AnotherFollows(const Serializer& reader, std::size_t read, int count) {
  if (!reader.NextIsValue() || reader.NextKey() == kEndKey) return false;
  return static_cast<int>(read) < count || reader.NextKey() == kTypeKey;
}

}  // namespace

// Core, or every level saved during a match would keep a copy.
ObjectiveManager::ObjectiveManager() : countdownId_(Objects().CreateObject()) {
  GameObject& countdown = *Objects().GetObject(countdownId_);
  countdown.core = true;
  countdown.GetTransform().graphicsScale = {kHiddenScale, kHiddenScale, 0.0f};
  auto& text = countdown.Insert(std::make_unique<SpriteText>());
  text.visible = false;
  text.r = 1.0f;
}

ObjectiveManager::~ObjectiveManager() {
  if (GameObject* countdown = Objects().GetObject(countdownId_)) countdown->alive = false;
}

void ObjectiveManager::Initialize() {
  const ScriptBox* scripts = owner == nullptr ? nullptr : owner->Get<ScriptBox>();
  if (Script* segments = scripts == nullptr ? nullptr : scripts->GetScript("SegmentManager"))
    episodeLength_ = static_cast<SegmentManager*>(segments)->MeasureEpisode();
  sectionTime_ = kFirstSection;
  elapsed_ = 0.0f;
}

bool ObjectiveManager::IsDone() const {
  return !IsAnyLeft() && (currentObjective_ == nullptr || !currentObjective_->IsActive());
}

void ObjectiveManager::Update(float step) {
  // Dead it is updated once more: beside its successor after a new game, or when the clock has just ended the match.
  if (!owner->alive || IsDone()) return;
  if (currentObjective_ != nullptr && Input::IsKeyDown("shift") && Input::IsLetterTriggered('l')) {
    elapsed_ = 0.0f;
    EndSection();
    if (currentObjective_ == nullptr) return;
  }
  if (currentObjective_ == nullptr) BeginWaiting();
  elapsed_ += step;
  ShowCountdown();
  if (elapsed_ > sectionTime_) {
    elapsed_ -= sectionTime_;
    EndSection();
  } else if (currentObjective_->IsActive()) {
    currentObjective_->Update(step);
  }
}

// The first rule, or one that the editor added when all had ended: its time is the section's that stands, if there is
// one.
void ObjectiveManager::BeginWaiting() {
  BeginNext();
  if (sectionTime_ != 0.0f) return;
  sectionTime_ = static_cast<float>(currentObjective_->runtime);
  elapsed_ = 0.0f;
}

void ObjectiveManager::BeginNext() {
  currentObjective_ = objectives_[nextIndex_++].get();
  LogEvent("objective begin %s", currentObjective_->typeName.c_str());
  currentObjective_->Begin();
}

// The next rule begins in the frame in which the last one ends: the slow motion of the first stops before the
// second's starts.
void ObjectiveManager::EndSection() {
  HideCountdown();
  if (currentObjective_->IsActive()) {
    currentObjective_->End();
    LogEvent("objective end %s", currentObjective_->typeName.c_str());
  }
  currentObjective_ = nullptr;
  if (!IsAnyLeft()) return;
  BeginNext();
  sectionTime_ = static_cast<float>(currentObjective_->runtime);
}

void ObjectiveManager::ShowCountdown() {
  const GameObject* countdown = Objects().GetObject(countdownId_);
  if (countdown == nullptr) return;
  const float left = std::max(sectionTime_ - elapsed_, 0.0f);
  if (left >= kCountdownTime || currentObjective_->explanatoryText.empty()) {
    HideCountdown();
    return;
  }
  const float digits = left * kDigitsPerSecond;
  const int digit = static_cast<int>(digits);
  const float scale = kDigitScale * (digits - static_cast<float>(digit));
  auto* text = countdown->Get<SpriteText>();
  text->visible = true;
  text->SetText(std::to_string(digit));
  countdown->GetTransform().graphicsScale = {scale, scale, 0.0f};
}

void ObjectiveManager::HideCountdown() {
  if (const GameObject* countdown = Objects().GetObject(countdownId_)) countdown->Get<SpriteText>()->visible = false;
}

void ObjectiveManager::HandleEvent(const Event& event) {
  if (currentObjective_ != nullptr) currentObjective_->HandleEvent(event);
}

void ObjectiveManager::OnCollision(const CollisionPair& pair) {
  if (currentObjective_ != nullptr) currentObjective_->OnCollision(pair);
}

void ObjectiveManager::OnContact(const GalePhysics::Contact& contact) {
  if (currentObjective_ != nullptr) currentObjective_->OnContact(contact);
}

void ObjectiveManager::Serialize(Serializer& writer) const {
  writer.WriteInt("Sections", static_cast<int>(objectives_.size()));
  for (const auto& objective : objectives_) objective->Serialize(writer);
  writer.WriteString(kEndKey, "Done");
}

void ObjectiveManager::Deserialize(Serializer& reader) {
  const int count = reader.ReadInt();
  const std::string where = reader.Where();
  while (AnotherFollows(reader, objectives_.size(), count)) Add(ReadObjective(reader));
  if (static_cast<int>(objectives_.size()) != count)
    Print("%s: says %d objectives, %zu follow\n", where.c_str(), count, objectives_.size());
  reader.ReadString();
}

void ObjectiveManager::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("ObjectiveManager");
  bar.AddReadOnlyCopy("Sections", static_cast<int>(objectives_.size()));
  bar.Add("SectionTime", &sectionTime_);
  bar.Add("ObjectiveName", &objectiveName_);
  bar.AddInsertButton("Add Objective", "Add above objective",
                      {[this](int place) { return AddNamedObjective(place); },
                       [this](int place) { RemoveObjective(static_cast<std::size_t>(place)); }});
  bar.EndGroup();
}

// In front of the next one to start, or further behind.
int ObjectiveManager::AddNamedObjective(int place) {
  auto objective = CreateObjective(objectiveName_);
  if (objective == nullptr) {
    Print("no objective is called \"%s\"\n", objectiveName_.c_str());
    return Insertion::kNowhere;
  }
  place = std::clamp(place, static_cast<int>(nextIndex_), static_cast<int>(objectives_.size()));
  objectives_.insert(objectives_.begin() + place, std::move(objective));
  return place;
}

// Another one that runs goes on running; after this one the next begins.
void ObjectiveManager::RemoveObjective(std::size_t place) {
  if (place >= objectives_.size()) return;
  const std::unique_ptr<Objective> removed = std::move(objectives_[place]);
  objectives_.erase(objectives_.begin() + static_cast<std::ptrdiff_t>(place));
  if (place < nextIndex_) --nextIndex_;
  if (removed.get() != currentObjective_) return;
  elapsed_ = 0.0f;
  EndSection();
}
