// Something that pushes bodies, once per sub-step. Generators are scripts so that files and the editor can name them,
// but the bodies that list them drive them. All belong to one hidden host (see generator_host.h).
#pragma once

#include "core/script.h"

namespace GalePhysics {

class RigidBody;

class ForceGenerator : public Script {
 public:
  /// Adds to the body's force or sets its acceleration for one sub-step of Time().physicsStep seconds.
  virtual void UpdateForce(RigidBody& body) = 0;
  /// Anchors the generator at an object.
  virtual void SetBase(GameObject& /*base*/) {}
  virtual bool HasBase() const { return true; }

  /// Takes the next ID of the running save and writes it.
  void Serialize(Serializer& writer) const override;
  /// Enters the generator under the ID it reads, for the bodies of the same load.
  void Deserialize(Serializer& reader) override;
};

}  // namespace GalePhysics
