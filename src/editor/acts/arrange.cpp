#include "editor/acts/arrange.h"

#include <algorithm>
#include <functional>

#include "core/transform.h"
#include "editor/acts/history.h"
#include "editor/acts/mirror_fields.h"
#include "editor/acts/object_shape.h"

namespace Arrange {

namespace {

using Objects = std::vector<GameObject*>;

std::string Told(const Objects& objects) {
  return objects.size() == 1 ? ShownNameOf(*objects.front()) : std::to_string(objects.size()) + " objects";
}

// A zero with a sign is none that history tells from one without, but files do.
void DropSigns(Form& form) {
  for (Vec3* v : {&form.position, &form.graphicsScale, &form.velocity}) *v += Vec3{};
  Quaternion& q = form.orientation;
  for (float* part : {&q.r, &q.i, &q.j, &q.k}) *part += 0.0f;
}

// Gives each selected object the form that `change` makes of its own; "WHAT of N objects".
std::string Reshape(History& history, const std::string& what,
                    const std::function<void(const GameObject&, Form&)>& change) {
  const Objects objects = SelectedObjects();
  if (objects.empty()) return "nothing is selected";
  const std::string told = what + " of " + Told(objects);
  const History::Group group(history, told);
  for (GameObject* object : objects) {
    const Form before = TakeForm(*object);
    Form after = before;
    change(*object, after);
    DropSigns(after);
    ChangeForm(*object, before, after);
    history.RecordForm(object->id, before, after);
  }
  return told;
}

Bounds BoundsOfAll(const Objects& objects) {
  Bounds all = objects.empty() ? Bounds{} : BoundsOf(*objects.front());
  for (const GameObject* object : objects) all.Add(BoundsOf(*object));
  return all;
}

Quaternion Turned(const Quaternion& q, const Quaternion& by) {
  return Normalised(
      Quaternion{by.r * q.r - by.k * q.k, by.r * q.i - by.k * q.j, by.r * q.j + by.k * q.i, by.r * q.k + by.k * q.r});
}

}  // namespace

std::string Move(History& history, const Vec3& way) {
  return Reshape(history, "the move", [&](const GameObject&, Form& form) { form.position += way; });
}

std::string Turn(History& history, float degrees) {
  const Objects objects = SelectedObjects();
  const Quaternion by = QuaternionFromZ(degrees * kPi / 180.0f);
  const Matrix33 turn = ToMatrix(by);
  const Vec3 middle = BoundsOfAll(objects).Middle();
  return Reshape(history, "the turn", [&](const GameObject&, Form& form) {
    form.orientation = Turned(form.orientation, by);
    if (objects.size() == 1) return;
    const Vec3 arm = {form.position.x - middle.x, form.position.y - middle.y, 0.0f};
    const Vec3 turned = turn * arm;
    form.position = {middle.x + turned.x, middle.y + turned.y, form.position.z};
  });
}

std::string Mirror(History& history, Axis axis, const std::optional<Vec3>& about) {
  const Objects objects = SelectedObjects();
  const Vec3 own = objects.size() == 1 ? objects.front()->GetTransform().position : BoundsOfAll(objects).Middle();
  const Vec3 middle = about.value_or(own);
  float Vec3::*side = axis == Axis::kAcross ? &Vec3::x : &Vec3::y;
  const History::Group group(history, "the mirroring of " + Told(objects));
  MirrorFields(history, objects, side);
  return Reshape(history, "the mirroring", [&](const GameObject&, Form& form) {
    form.position.*side = 2.0f * middle.*side - form.position.*side;
    form.graphicsScale.*side = -(form.graphicsScale.*side);
    Quaternion& q = form.orientation;
    q = axis == Axis::kAcross ? Quaternion{q.r, q.i, -q.j, -q.k} : Quaternion{q.r, -q.i, q.j, -q.k};
  });
}

std::string Align(History& history, Edge edge) {
  const Bounds all = BoundsOfAll(SelectedObjects());
  return Reshape(history, "the alignment", [&](const GameObject& object, Form& form) {
    const Bounds own = BoundsOf(object);
    switch (edge) {
      case Edge::kLeft:
        form.position.x += all.left - own.left;
        break;
      case Edge::kCentre:
        form.position.x += all.Middle().x - own.Middle().x;
        break;
      case Edge::kRight:
        form.position.x += all.right - own.right;
        break;
      case Edge::kTop:
        form.position.y += all.top - own.top;
        break;
      case Edge::kMiddle:
        form.position.y += all.Middle().y - own.Middle().y;
        break;
      case Edge::kBottom:
        form.position.y += all.bottom - own.bottom;
        break;
    }
  });
}

std::string Spread(History& history, Axis axis) {
  float Vec3::*side = axis == Axis::kAcross ? &Vec3::x : &Vec3::y;
  Objects objects = SelectedObjects();
  if (objects.size() < 3) return "three objects at least can be spread";
  const auto placeOf = [&](const GameObject* object) { return object->GetTransform().position.*side; };
  std::stable_sort(objects.begin(), objects.end(),
                   [&](const GameObject* a, const GameObject* b) { return placeOf(a) < placeOf(b); });
  const float first = placeOf(objects.front());
  const float step = (placeOf(objects.back()) - first) / static_cast<float>(objects.size() - 1);
  return Reshape(history, "the spreading", [&](const GameObject& object, Form& form) {
    const auto index = std::find(objects.begin(), objects.end(), &object) - objects.begin();
    form.position.*side = first + step * static_cast<float>(index);
  });
}

}  // namespace Arrange
