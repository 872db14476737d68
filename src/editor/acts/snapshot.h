// An object put aside, to be made again exactly: what files keep of it, at full precision, what bars show of it, its
// text and assemblage, and the generators that push it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/game_object.h"
#include "editor/acts/unsaved_parts.h"
#include "editor/bars/field_value.h"

namespace GalePhysics {
class ForceGenerator;
}

struct Snapshot {
  std::uint32_t id;
  std::string name;
  std::string text;                                        ///< a document with the object alone
  std::vector<std::pair<std::string, FieldValue>> values;  ///< by path on a bar of its own
  std::vector<GalePhysics::ForceGenerator*> generators;    ///< these live to the end of the run
  std::vector<GalePhysics::ForceGenerator*> baseOfGenerators;
  UnsavedParts parts;
  Quaternion orientation;  ///< which some scripts set when they are attached
};

/// False for an object with a camera or the mouse in it.
bool CanTakeSnapshot(const GameObject& object);
/// Nothing of the object changes.
Snapshot TakeSnapshot(GameObject& object);
/// Makes the object at the end of the list, under its own ID, which no other may bear. Scripts are read and attached as
/// from a file, but a match does not begin anew. Null when the scene is full.
GameObject* MakeFromSnapshot(const Snapshot& snapshot);
