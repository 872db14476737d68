#include "match/rules/whale_boss.h"

#include "core/game_object.h"
#include "match/whale/make_a_whale.h"
#include "physics/contact.h"

void WhaleBoss::Begin() {
  BuildWhale();
  Objective::Begin();
}

void WhaleBoss::OnContact(const GalePhysics::Contact& contact) {
  if (contact.secondOwner->name == "ringstatic") contact.secondOwner->alive = false;
}
