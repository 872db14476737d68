#include "match/player/charge_rules.h"

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/game_object.h"
#include "core/script_box.h"
#include "core/transform.h"
#include "match/player/force_events.h"
#include "physics/math/trigonometry.h"

void ChargeRules::Fly(bool held, const Flight& flight) {
  if (held) {
    if (!charging) Begin(flight);
    const float angle = Atan2(flight.aim.y, flight.aim.x);
    flight.aim = Normalised(flight.aim);
    display_.Place(flight.octopus.GetTransform().position, flight.aim, angle, force);
    return;
  }
  if (charging) Release(flight);
  charging = false;
}

void ChargeRules::Begin(const Flight& flight) {
  Audio::StartCharge(flight.player);
  display_.Show(flight.player);
  SendEvent(flight.gauge, Event(ForceEvents::kStartCharge));
  force = 0.0f;
  charging = true;
}

// The launch goes along the stick as it is in this frame: the gauge's answer comes inside the call.
void ChargeRules::Release(const Flight& flight) {
  Audio::StopCharge(flight.player);
  Audio::Play(Sound::kRelease, Audio::kOneShot);
  display_.Remove();
  SendEvent(flight.gauge, Event(ForceEvents::kLaunch));
}

void ChargeRules::Drop() {
  charging = false;
  display_.Remove();
}
