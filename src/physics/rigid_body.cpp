#include "physics/rigid_body.h"

#include <cmath>
#include <limits>

#include "core/field_bar.h"
#include "core/game_object.h"
#include "core/game_time.h"
#include "core/print.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "physics/force_generator.h"
#include "physics/generator_host.h"

namespace GalePhysics {

namespace {
constexpr int kMaxGenerators = 1000;  // that a file may give one body
}

float DefaultDamping() {
  static const float damping = std::sqrt(0.997f);
  return damping;
}

RigidBody::RigidBody(const Vec3& startVelocity, const Vec3& startAcceleration, bool lockRotation,
                     const Vec3& startAngularVelocity, float mass)
    : PointMass(startVelocity, startAcceleration, DefaultDamping(), mass),
      angularVelocity(startAngularVelocity),
      rotationLocked(lockRotation) {}

void RigidBody::AddGenerator(ForceGenerator* generator) {
  if (generator != nullptr) generators.push_back(generator);
}

void RigidBody::SetInverseInertia(const Matrix33& tensor) {
  GetWorldInverseInertia();  // what is owed to the steps so far is made of the old one
  inverseInertia_ = tensor;
}

const Matrix33& RigidBody::GetWorldInverseInertia() const {
  if (worldTensorStale_) worldInverseInertia_ = inverseInertia_ * tensorRotation_;
  worldTensorStale_ = false;
  return worldInverseInertia_;
}

Matrix33 RigidBody::GetInverseInertiaWorldInverse() const {
  Matrix33 inverse;
  Invert(GetWorldInverseInertia(), inverse);
  return inverse;
}

void RigidBody::Integrate() {
  const float step = Time().physicsStep;
  Transform& transform = owner->GetTransform();
  for (ForceGenerator* generator : generators) generator->UpdateForce(*this);

  const Vec3 oldPosition = transform.position;
  const Quaternion oldOrientation = transform.orientation;
  transform.position = oldPosition + velocity * step;
  // In a local: a member that was just stored in part would be waited for.
  Vec3 v = velocity + forceTotal * inverseMass;  // generators have scaled their forces by the step already
  v += acceleration * step;
  velocity = v * damping;
  forceTotal = {};

  if (rotationLocked) {
    angularVelocity = {};
  } else {
    transform.orientation = Normalised(AddScaled(oldOrientation, angularVelocity * step));
    if (!(torqueTotal == Vec3{})) angularVelocity += GetWorldInverseInertia() * torqueTotal;
    angularVelocity *= damping;
  }
  torqueTotal = {};
  const Vec3& p = transform.position;
  const Quaternion& q = transform.orientation;
  const bool finite = (p.x + p.y + p.z + velocity.x + velocity.y + velocity.z + q.r + q.k) * 0.0f == 0.0f;
  if (!finite) StopInfinite(oldPosition, oldOrientation);

  tensorRotation_ = transform.GetMatrix().rotation;
  worldTensorStale_ = true;
}

bool RigidBody::IsStill() const {
  const Vec3 none;
  return velocity == none && angularVelocity == none && acceleration == none && forceTotal == none &&
         torqueTotal == none && generators.empty();
}

// One infinite position would make the whole broad phase region infinite, and with it every collision disappear; an
// infinite velocity would spread by contact.
void RigidBody::StopInfinite(const Vec3& oldPosition, const Quaternion& oldOrientation) {
  Transform& transform = owner->GetTransform();
  if (!reportedInfinite_) Print("%s: left the finite numbers, stopped\n", owner->name.c_str());
  reportedInfinite_ = true;
  transform.position = IsFinite(oldPosition) ? oldPosition : Vec3{};
  transform.orientation = std::isfinite(oldOrientation.r + oldOrientation.k) ? oldOrientation : Quaternion{};
  velocity = angularVelocity = {};
  if (!IsFinite(acceleration)) acceleration = {};
}

void RigidBody::Serialize(Serializer& writer) {
  writer.BeginComponent("RigidBody");
  writer.WriteVec3(velocity);
  writer.WriteVec3(acceleration);
  writer.WriteVec3(forceTotal);
  writer.WriteFloat("inverseMass", OwnInverseMass());
  writer.WriteFloat("damping", OwnDamping());
  writer.WriteVec3(angularVelocity);
  writer.WriteVec3(torqueTotal);
  writer.WriteMatrix33(inverseInertia_);
  writer.WriteMatrix33(GetWorldInverseInertia());
  writer.WriteBool("rotationLocked_", rotationLocked);
  const auto writeList = [&](const char* key, const std::vector<ForceGenerator*>& list) {
    writer.WriteInt(key, static_cast<int>(list.size()));
    for (const ForceGenerator* generator : list) writer.WriteInt("generator ID", SavedGeneratorId(*generator));
  };
  writeList("num force generators", generators);
  writeList("num force generators I'm a base of", baseOfGenerators);
  writer.EndBlock();
}

void RigidBody::Deserialize(Serializer& reader) {
  velocity = reader.ReadVec3();
  acceleration = reader.ReadVec3();
  forceTotal = reader.ReadVec3();
  inverseMass = reader.ReadFloat();
  if (inverseMass < 0.0f) {
    Print("%s: inverseMass below 0, read as 0\n", reader.Where().c_str());
    inverseMass = 0.0f;
  }
  damping = reader.ReadFloat();
  angularVelocity = reader.ReadVec3();
  torqueTotal = reader.ReadVec3();
  inverseInertia_ = reader.ReadMatrix33();
  worldInverseInertia_ = reader.ReadMatrix33();
  worldTensorStale_ = false;
  rotationLocked = reader.ReadBool();
  const auto readList = [&](auto link) {
    int left = reader.ReadCount();
    if (left > kMaxGenerators)
      Print("%s: more than %d force generators, the rest is skipped\n", reader.Where().c_str(), kMaxGenerators);
    for (int number = 0; left > 0 && reader.NextIsValue(); --left, ++number) {
      const int id = reader.ReadInt();
      if (number >= kMaxGenerators) continue;
      if (ForceGenerator* generator = LoadedGenerator(id))
        link(*generator);
      else
        Print("%s: no force generator %d in this file, skipped\n", reader.Where().c_str(), id);
    }
  };
  readList([this](ForceGenerator& generator) { AddGenerator(&generator); });
  readList([this](ForceGenerator& generator) { generator.SetBase(*owner); });
}

void RigidBody::AddToTweakBar(FieldBar& bar) {
  bar.BeginGroup("RigidBody");
  bar.AddCopy("Rotation", AngleAboutZ(owner->GetTransform().orientation));
  bar.Add("angular velocity", &angularVelocity);
  bar.Add("rotation locked", &rotationLocked);
  bar.Add("velocity", &velocity);
  bar.Add("acceleration", &acceleration);
  bar.AddReadOnly("forceTotal", &forceTotal);
  bar.Add("damping", &damping);
  bar.AddLimited("inverseMass", &inverseMass, 0.0, std::numeric_limits<float>::max());
  for (ForceGenerator* generator : generators) generator->AddToTweakBar(bar);
  bar.EndGroup();
}

}  // namespace GalePhysics
