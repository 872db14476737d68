#include "tools/simulate/trace.h"

#include <algorithm>
#include <string>

#include "core/object_manager.h"
#include "core/transform.h"
#include "physics/rigid_body.h"

namespace {

std::string NameForTrace(const std::string& name) {
  if (name.empty()) return "-";
  std::string text = name;
  const auto isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  std::replace_if(text.begin(), text.end(), isBlank, '_');
  return text;
}

void WriteNumbers(std::FILE* out, std::initializer_list<float> numbers) {
  for (const float number : numbers) std::fprintf(out, " %.9g", static_cast<double>(number));
}

void EndLine(std::FILE* out) {
  std::fputc('\n', out);
  std::fflush(out);
}

}  // namespace

Trace::Trace(std::FILE* out) : out_(out) {
  GalePhysics::SetStepObserver(this);
  SetRunLogListener(this);
}

Trace::~Trace() {
  GalePhysics::SetStepObserver(nullptr);
  SetRunLogListener(nullptr);
}

void Trace::EndFrame() {
  for (const auto& object : Objects().GetObjects()) {
    const Vec3& p = object->GetTransform().position;
    const Quaternion& q = object->GetTransform().orientation;
    const auto* body = object->Get<GalePhysics::RigidBody>();
    const Vec3 v = body == nullptr ? Vec3{} : body->velocity;
    const Vec3 w = body == nullptr ? Vec3{} : body->angularVelocity;
    std::fprintf(out_, "object %d %u %s", frame_, object->id, NameForTrace(object->name).c_str());
    WriteNumbers(out_, {p.x, p.y, p.z, q.r, q.i, q.j, q.k, v.x, v.y, v.z, w.x, w.y, w.z});
    std::fputc('\n', out_);
  }
  std::fflush(out_);
}

void Trace::OnContact(int subStep, const GalePhysics::Contact& contact) {
  const Vec3& p = contact.point;
  const Vec3& n = contact.normal;
  std::fprintf(out_, "contact %d %d %u %u", frame_, subStep, contact.firstOwner->id, contact.secondOwner->id);
  WriteNumbers(out_, {p.x, p.y, p.z, n.x, n.y, n.z, contact.penetration});
  EndLine(out_);
}

void Trace::OnCollision(int subStep, const CollisionPair& pair) {
  std::fprintf(out_, "overlap %d %d %u %u", frame_, subStep, pair.self->id, pair.other->id);
  EndLine(out_);
}

void Trace::OnEvent(std::string_view text) {
  std::fprintf(out_, "event %d %.*s", frame_, static_cast<int>(text.size()), text.data());
  EndLine(out_);
}
