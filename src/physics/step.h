// One sub-step of the physics, fifteen of which make a running frame, and the pass that only looks for overlaps with
// the cursor while the game is paused. Not to be called from inside its own callbacks. Main thread only.
#pragma once

#include "core/component.h"
#include "physics/contact.h"

namespace GalePhysics {

/// Moves every body by Time().physicsStep, finds contacts and overlaps, tells the objects and resolves the contacts in
/// one pass. An object hears of a contact before it is resolved, but after the ones before it in the list.
void StepPhysics();

/// Finds overlaps and tells both sides of those in which one has a MouseComponent.
void DetectOverlapsOnly();

/// Relative velocity at the contact along its normal, units per body second; negative when the bodies approach.
float SeparatingVelocity(const Contact& contact);
/// Newton's law of restitution as one impulse, with an eighth of it turning the bodies; nothing when they separate.
/// `totalInverseMass`: sum of both inverse masses, above 0.
void ResolveVelocity(const Contact& contact, float totalInverseMass);
/// Moves the bodies apart along the normal, in proportion to their inverse masses.
void ResolveInterpenetration(const Contact& contact, float totalInverseMass);

/// Watches the physics, for whoever records a run.
class StepObserver {
 public:
  virtual ~StepObserver() = default;
  /// Each contact just before anybody else hears of it. `subStep` counts from 0 within the frame.
  virtual void OnContact(int subStep, const Contact& contact) = 0;
  /// Each overlap just before it is delivered; subStep 0 in paused frames.
  virtual void OnCollision(int subStep, const CollisionPair& pair) = 0;
};

/// The observer from now on; not owned, null for none.
StepObserver* SetStepObserver(StepObserver* observer);

/// Runs the sub-steps of one frame.
void RunSubSteps();

}  // namespace GalePhysics
