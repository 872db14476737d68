// The exact tests between two colliders.
#pragma once

#include <cstddef>
#include <vector>

#include "physics/collider.h"
#include "physics/contact.h"

namespace GalePhysics {

/// What one detection pass found, in the order of finding.
struct Findings {
  std::vector<Contact> contacts;
  std::vector<CollisionPair> overlaps;

  std::size_t Size() const { return contacts.size() + overlaps.size(); }
};

/// Tests two colliders that are in objects and appends at most one contact per pair of shapes, or an overlap when
/// either is a ghost. Touching spheres count as overlapping. A contact between two owners without body is not made.
void Collide(const Collider& first, const Collider& second, Findings& findings);

}  // namespace GalePhysics
