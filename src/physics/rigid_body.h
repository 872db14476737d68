// Makes an object move. The body has no place of its own: it moves its owner's Transform. Main thread only.
#pragma once

#include <vector>

#include "physics/math/matrix33.h"
#include "physics/math/quaternion.h"
#include "physics/point_mass.h"

namespace GalePhysics {

class ForceGenerator;

class RigidBody final : public PointMass {
 public:
  static constexpr Kind kKind = Kind::kRigidBody;

  /// At rest, unlocked, mass 1, with the default damping.
  RigidBody() : RigidBody({}, {}, false, {}, 1.0f) {}
  /// `mass` 0 makes it immovable by forces and contacts; both tensors are the identity.
  RigidBody(const Vec3& startVelocity, const Vec3& startAcceleration, bool lockRotation,
            const Vec3& startAngularVelocity, float mass);

  void Serialize(Serializer& writer) override;
  /// Generators are linked by the IDs of this load; unknown ones are left out with a message.
  void Deserialize(Serializer& reader) override;
  void AddToTweakBar(FieldBar& bar) override;

  /// One sub-step of Time().physicsStep seconds: the position moves by the old velocity, then the velocities change
  /// (the explicit Euler method). A step that would leave the finite numbers is undone and the body stopped.
  void Integrate();
  /// Whether nothing moves, turns or drives it.
  bool IsStill() const;
  /// Whether a step has been undone, so that the body is no longer where forces would have brought it.
  bool WasStopped() const { return reportedInfinite_; }
  /// Adds a generator, which must outlive the body; null is ignored.
  void AddGenerator(ForceGenerator* generator);
  /// The inverse of the world inverse inertia tensor; the identity when that has none.
  Matrix33 GetInverseInertiaWorldInverse() const;

  const Matrix33& GetInverseInertia() const { return inverseInertia_; }
  void SetInverseInertia(const Matrix33& tensor);

  Vec3 angularVelocity;                           ///< radians per body second about each axis
  Vec3 torqueTotal;                               ///< emptied by every integration
  bool rotationLocked = false;                    ///< a locked body never turns
  bool atRest = false;                            ///< of the physics step: the last sub-step changed nothing of it
  std::vector<ForceGenerator*> generators;        ///< applied each sub-step in this order; not owned
  std::vector<ForceGenerator*> baseOfGenerators;  ///< generators anchored here; kept for saving; not owned

 private:
  void StopInfinite(const Vec3& oldPosition, const Quaternion& oldOrientation);

  Matrix33 inverseInertia_;  // body space
  // The world tensor is inverse inertia times rotation, the rotation being the one cached before the last step. It is
  // made only when a contact or a save asks for it; until the first step a file's own stands.
  const Matrix33& GetWorldInverseInertia() const;
  mutable Matrix33 worldInverseInertia_;
  mutable bool worldTensorStale_ = false;
  Matrix33 tensorRotation_;
  bool reportedInfinite_ = false;
};

/// The damping of a body by default, √0.997.
float DefaultDamping();

}  // namespace GalePhysics
