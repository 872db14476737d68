#include "scripts/props/death_timer.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "scripts/breakable.h"

// Asks again in every frame after the end; a thing that breaks already ignores it.
void DeathTimer::Update(float step) {
  timer_ += step;
  if (timer_ < endTime) return;
  if (Breakable* thing = FindBreakable(*owner))
    thing->Break();
  else
    owner->alive = false;
}

void DeathTimer::Serialize(Serializer& writer) const { writer.WriteFloat("Time", endTime); }
void DeathTimer::Deserialize(Serializer& reader) { endTime = reader.ReadFloat(); }

DeathTimer* FindDeathTimer(const GameObject& object) {
  const auto* scripts = object.Get<ScriptBox>();
  return scripts == nullptr ? nullptr : static_cast<DeathTimer*>(scripts->GetScript("DeathTimer"));
}

void DeathTimer::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("DeathTimer");
  bar.Add("timer", &timer_);
  bar.Add("end time", &endTime);
  bar.EndGroup();
}
