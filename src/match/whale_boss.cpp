#include "match/whale_boss.h"

#include "core/game_object.h"
#include "physics/contact.h"
#include "scripts/make_a_whale.h"

void WhaleBoss::Begin() {
  BuildWhale();
  Objective::Begin();
}

void WhaleBoss::OnContact(const GalePhysics::Contact& contact) {
  if (contact.secondOwner->name == "ringstatic") contact.secondOwner->alive = false;
}
