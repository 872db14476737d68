#include "scripts/props/follow.h"

#include "core/field_bar.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/transform.h"

void Follow::Update(float /*step*/) {
  if (const GameObject* leader = Objects().GetObject(leaderId_))
    owner->GetTransform().position = leader->GetTransform().position + offset_;
  else
    owner->alive = false;
}

void Follow::OnContact(const GalePhysics::Contact& contact) {
  const GameObject* leader = owner->alive ? Objects().GetObject(leaderId_) : nullptr;
  ScriptBox* scripts = leader == nullptr ? nullptr : leader->Get<ScriptBox>();
  if (Script* health = scripts == nullptr ? nullptr : scripts->GetScript("bosshealth")) health->OnContact(contact);
}

void Follow::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("follow");
  bar.Add("ID to follow", &leaderId_);
  bar.EndGroup();
}
