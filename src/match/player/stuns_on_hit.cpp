#include "match/player/stuns_on_hit.h"

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/player_name.h"
#include "match/player/dizzy.h"
#include "physics/contact.h"

void StunsOnHit::Hit(const GameObject& other) const {
  if (!owner->alive || !IsPlayerName(other.name)) return;
  if (Dizzy* dizzy = FindDizzy(other)) dizzy->Stun();
}

void StunsOnHit::OnContact(const GalePhysics::Contact& contact) { Hit(*contact.secondOwner); }
void StunsOnHit::OnCollision(const CollisionPair& pair) { Hit(*pair.other); }

void StunsOnHit::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("stunsonhit");
  bar.Add("Script Name", &scriptName_);
  bar.EndGroup();
}
