#include "tools/simulate/number_check.h"

#include <cmath>
#include <cstdio>
#include <initializer_list>

#include "core/transform.h"
#include "physics/box_collider.h"
#include "physics/primitive_assemblage.h"
#include "physics/rigid_body.h"
#include "physics/sphere_collider.h"

namespace {

using Numbers = std::initializer_list<float>;

std::string Say(const char* what, Numbers numbers) {
  std::string text = what;
  for (const float number : numbers) {
    char digits[32];
    std::snprintf(digits, sizeof digits, " %.9g", static_cast<double>(number));
    text += digits;
  }
  return text;
}

// Looks at group after group of numbers and keeps the first that is wrong.
class Reader {
 public:
  void Read(const char* what, Numbers numbers) {
    float zeros = 0.0f;  // a number times 0 is 0 only if it is finite
    for (const float number : numbers) zeros += number * 0.0f;
    if (zeros != 0.0f && fault.empty()) fault = Say(what, numbers) + " is not finite";
  }
  void Read(const char* what, const Vec3& v) { Read(what, {v.x, v.y, v.z}); }
  void Read(const char* what, const Quaternion& q) { Read(what, {q.r, q.i, q.j, q.k}); }

  std::string fault;
};

void ReadBody(Reader& reader, const GalePhysics::RigidBody& body) {
  reader.Read("velocity", body.velocity);
  reader.Read("acceleration", body.acceleration);
  reader.Read("force", body.forceTotal);
  reader.Read("angular velocity", body.angularVelocity);
  reader.Read("torque", body.torqueTotal);
  reader.Read("inverse mass and damping", {body.inverseMass, body.damping, body.storedInverseMass, body.storedDamping});
  if (body.WasStopped() && reader.fault.empty()) reader.fault = "left the finite numbers and was stopped";
}

void ReadCollider(Reader& reader, const GalePhysics::Collider& collider) {
  reader.Read("broad phase size and restitution", {collider.broadPhaseSize, collider.restitution});
}

void ReadSphere(Reader& reader, const GalePhysics::SphereCollider& sphere) {
  ReadCollider(reader, sphere);
  reader.Read("radius", {sphere.radius});
  reader.Read("sphere's offset", sphere.partOffset);
}

void ReadBox(Reader& reader, const GalePhysics::BoxCollider& box) {
  ReadCollider(reader, box);
  reader.Read("half extents", box.halfExtents);
  reader.Read("box's offset", box.partOffset);
  reader.Read("box's rotation", box.partRotation);
}

}  // namespace

std::string FindWrongNumber(const GameObject& object) {
  Reader reader;
  const Transform& transform = object.GetTransform();
  reader.Read("position", transform.position);
  reader.Read("orientation", transform.orientation);
  reader.Read("graphics scale", transform.graphicsScale);
  if (const auto* body = object.Get<GalePhysics::RigidBody>()) ReadBody(reader, *body);
  if (const auto* sphere = object.Get<GalePhysics::SphereCollider>()) ReadSphere(reader, *sphere);
  if (const auto* box = object.Get<GalePhysics::BoxCollider>()) ReadBox(reader, *box);
  if (const auto* parts = object.Get<GalePhysics::PrimitiveAssemblage>()) {
    ReadCollider(reader, *parts);
    for (const auto& box : parts->boxes) ReadBox(reader, *box);
    for (const auto& sphere : parts->spheres) ReadSphere(reader, *sphere);
  }
  return reader.fault;
}

std::string FindFarPlace(const GameObject& object) {
  const Vec3& p = object.GetTransform().position;
  if (std::abs(p.x) <= kWorldReach && std::abs(p.y) <= kWorldReach && std::abs(p.z) <= kWorldReach) return {};
  return Say("position", {p.x, p.y, p.z}) + " is more than " + std::to_string(static_cast<int>(kWorldReach)) +
         " units from the middle";
}
