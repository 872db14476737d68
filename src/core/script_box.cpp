#include "core/script_box.h"

#include <algorithm>
#include <string>
#include <utility>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/print.h"
#include "core/serializer.h"

ScriptBox::~ScriptBox() {
  for (Entry& entry : entries_) entry.owned.reset();
}

// Every walk goes by index against the live size: a script may add scripts or retire them all.
void ScriptBox::Update(float step) {
  for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].script->Update(step);
}

void ScriptBox::HandleEvent(const Event& event) {
  for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].script->HandleEvent(event);
}

void ScriptBox::OnCollision(const CollisionPair& pair) {
  for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].script->OnCollision(pair);
}

void ScriptBox::OnContact(const GalePhysics::Contact& contact) {
  for (std::size_t i = 0; i < entries_.size(); ++i) entries_[i].script->OnContact(contact);
}

// What two have borrowed is the own one's again when the first of them has given it back: the first gives last.
void ScriptBox::GiveBack() {
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) entry->script->GiveBack();
}

void ScriptBox::TakeAgain() {
  for (const Entry& entry : entries_) entry.script->TakeAgain();
}

void ScriptBox::Serialize(Serializer& writer) {
  writer.BeginComponent("ScriptBox");
  for (const Entry& entry : entries_) {
    writer.BeginComponent(entry.script->GetName());
    entry.script->Serialize(writer);
    writer.EndBlock();
  }
  writer.EndBlock();
}

// Goes by depth, not by counting closing lines: a script that read one line too few or too many then costs itself, not
// the object around it.
void ScriptBox::Deserialize(Serializer& reader) {
  const int boxDepth = reader.GetDepth();
  std::string_view key;
  std::string_view value;
  while (reader.GetDepth() >= boxDepth) {
    const LineKind kind = reader.ReadLine(key, value);
    if (kind == LineKind::kEndOfFile || reader.GetDepth() < boxDepth) return;
    if (kind == LineKind::kBlockClose) continue;
    const bool isScript = kind == LineKind::kComponentOpen && reader.GetDepth() == boxDepth + 1;
    NewScript created = isScript && Objects().TakeScriptSlot(reader) ? CreateScript(key) : NewScript{};
    if (created.script != nullptr) {
      created.script->Deserialize(reader);
      Attach(std::move(created));
    } else {
      if (!isScript || !IsScriptRegistered(key)) Print("%s could not be found.\n", std::string(key).c_str());
      reader.SkipToDepth(boxDepth);
    }
  }
}

void ScriptBox::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("ScriptBox");
  for (const Entry& entry : entries_) entry.script->AddToTweakBar(bar);
  bar.EndGroup();
}

Script& ScriptBox::AddScript(std::unique_ptr<Script> script) {
  Script& added = *script;
  Attach({std::move(script), &added});
  return added;
}

Script* ScriptBox::AddScript(std::string_view registryName) {
  NewScript created = CreateScript(registryName);
  Script* script = created.script;
  if (script == nullptr)
    Print("Could not add script %s.\n", std::string(registryName).c_str());
  else
    Attach(std::move(created));
  return script;
}

void ScriptBox::Attach(NewScript created) {
  const bool owned = created.owned != nullptr;
  Script& script = *created.script;
  entries_.push_back({&script, std::move(created.owned)});
  if (!owned) return;
  script.owner = owner;
  script.Initialize();
}

Script* ScriptBox::GetScript(std::string_view name) const {
  for (const Entry& entry : entries_)
    if (name == entry.script->GetName()) return entry.script;
  return nullptr;
}

std::unique_ptr<Script> ScriptBox::TakeScript(const Script& script) {
  const auto found =
      std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.owned.get() == &script; });
  if (found == entries_.end()) return nullptr;
  std::unique_ptr<Script> taken = std::move(found->owned);
  entries_.erase(found);
  return taken;
}

void ScriptBox::RetireScripts() {
  for (Entry& entry : entries_) retired_.push_back(std::move(entry));
  entries_.clear();
}

Script* FindScript(std::string_view objectName, std::string_view scriptName) {
  const GameObject* object = Objects().FindObjectByName(objectName);
  const ScriptBox* box = object == nullptr ? nullptr : object->Get<ScriptBox>();
  return box == nullptr ? nullptr : box->GetScript(scriptName);
}

void SendEvent(std::string_view objectName, const Event& event) {
  const GameObject* object = Objects().FindObjectByName(objectName);
  ScriptBox* box = object == nullptr ? nullptr : object->Get<ScriptBox>();
  if (box != nullptr) box->HandleEvent(event);
}
