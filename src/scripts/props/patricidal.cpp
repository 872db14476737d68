#include "scripts/props/patricidal.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/script_box.h"
#include "core/serializer.h"

void Patricidal::Update(float /*step*/) {
  if (!armed_) return;
  owner->alive = false;
  owner->Get<ScriptBox>()->RetireScripts();
}

void Patricidal::Deserialize(Serializer& reader) { armed_ = !reader.IsInMemory(); }

void Patricidal::AddToTweakBar(FieldBar& bar) { bar.AddEmptyGroup("patricidal"); }
