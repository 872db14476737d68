#include "editor/object_list.h"

#include <algorithm>
#include <cctype>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/selection.h"
#include "editor/acts/object_shape.h"
#include "graphics/sprite.h"
#include "match/episode/segment_manager.h"
#include "physics/collider.h"
#include "physics/rigid_body.h"

namespace {

constexpr std::size_t kNameWidth = 24;  // letters
constexpr std::size_t kPictureWidth = 22;

enum ListedKind { kAll, kSolid, kGhost, kPicture, kMoving, kScripted, kCore };

std::string Lowered(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string Column(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text + ' ';
}

const char* ComponentsOf(Kind kind) {
  switch (kind) {
    case Kind::kRigidBody:
      return "body ";
    case Kind::kBoxCollider:
      return "box ";
    case Kind::kSphereCollider:
      return "sphere ";
    case Kind::kPrimitiveAssemblage:
      return "assemblage ";
    case Kind::kScriptBox:
      return "scripts ";
    case Kind::kGivePoints:
      return "points ";
    case Kind::kSpriteText:
      return "text ";
    default:
      return "";
  }
}

std::string LineOf(const GameObject& object) {
  const auto* sprite = object.Get<Sprite>();
  std::string line = Column(ShownNameOf(object), kNameWidth);
  line += Column(sprite == nullptr ? "-" : sprite->texturePath, kPictureWidth);
  for (std::size_t kind = 0; kind < kKindCount; ++kind)
    if (object.GetComponent(static_cast<Kind>(kind)) != nullptr) line += ComponentsOf(static_cast<Kind>(kind));
  return object.core ? line + "Core" : line;
}

bool IsOf(const GameObject& object, int kind) {
  const auto* collider = GalePhysics::FindCollider(object);
  const auto* body = object.Get<GalePhysics::RigidBody>();
  switch (kind) {
    case kSolid:
      return collider != nullptr && !collider->ghost;
    case kGhost:
      return collider != nullptr && collider->ghost;
    case kPicture:
      return collider == nullptr && object.Get<Sprite>() != nullptr;
    case kMoving:
      return body != nullptr && body->inverseMass > 0.0f;
    case kScripted:
      return object.Get<ScriptBox>() != nullptr && object.Get<ScriptBox>()->GetScriptCount() > 0;
    case kCore:
      return object.core;
    default:
      return true;
  }
}

bool Contains(const std::vector<std::uint32_t>& ids, std::uint32_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

void ObjectList::Reset() {
  shown_ = madeByPiece_ = false;
  filter_.clear();
  kind_ = kAll;
}

bool ObjectList::Passes(const GameObject& object, const std::string& line,
                        const std::vector<std::uint32_t>& levelIds) const {
  if (!object.alive || !IsOf(object, kind_)) return false;
  if (!filter_.empty() && Lowered(line).find(Lowered(filter_)) == std::string::npos) return false;
  if (!madeByPiece_) return true;
  const SegmentManager* segments = FindSegmentManager();
  return Contains(segments == nullptr ? levelIds : segments->GetPieceIds(), object.id);
}

void ObjectList::Fill(const std::vector<std::uint32_t>& levelIds, const Ringer& ring) {
  bar_.RemoveAll();
  Field filter{"Filter", &filter_};
  filter.whileTyping = true;
  bar_.Add(filter);
  bar_.GetLast().hint = "Part of what a line says: name, picture, components, scripts, Core";
  Field kind{"Kind", &kind_};
  kind.choices = {{kAll, "all"},       {kSolid, "solid"},      {kGhost, "ghost"}, {kPicture, "picture alone"},
                  {kMoving, "moving"}, {kScripted, "scripts"}, {kCore, "Core"}};
  bar_.Add(kind);
  bar_.GetLast().hint = "Only what is such a thing";
  bar_.Add("Made by this piece", &madeByPiece_);
  bar_.GetLast().hint = "Only what the level that was loaded, or the piece that is being played, has put there";
  AddChooser(levelIds);
  std::size_t found = 0;
  for (const auto& object : Objects().GetObjects()) {
    const std::string line = LineOf(*object);
    if (Passes(*object, line, levelIds) && ++found <= kMaxRows) AddRow(*object, line, ring);
  }
  if (found > kMaxRows) bar_.AddText("and " + std::to_string(found - kMaxRows) + " more: filter them");
}

// What the filters leave is looked for when it is pressed, not in every frame.
void ObjectList::AddChooser(const std::vector<std::uint32_t>& levelIds) {
  bar_.AddButton("Select these", [this, levelIds] {
    ClearSelection();
    for (const auto& object : Objects().GetObjects())
      if (Passes(*object, LineOf(*object), levelIds)) AddToSelection(object->id);
  });
  bar_.GetLast().hint = "Selects all that the filters leave";
}

// The row's name is the object's, so that an input file can press it.
void ObjectList::AddRow(const GameObject& object, const std::string& line, const Ringer& ring) {
  const std::uint32_t id = object.id;
  bar_.AddButton(ShownNameOf(object), line, [id] {
    ClearSelection();
    AddToSelection(id);
  });
  const std::size_t row = bar_.GetEntries().size() - 1;
  bar_.AddButton("Also " + ShownNameOf(object), [id] { AddToSelection(id); });
  bar_.GetLast().hidden = true;
  bar_.GetEntry(row).onShift = bar_.GetLast().path;
  bar_.AddButton("Ring " + ShownNameOf(object), [id, ring] { ring(id); });
  bar_.GetLast().hidden = true;
  bar_.GetEntry(row).onTwice = bar_.GetLast().path;
  bar_.GetEntry(row).row = bar_.GetEntry(row).indented = true;
  if (const auto* sprite = object.Get<Sprite>()) bar_.GetEntry(row).picture = sprite->texturePath;
  bar_.GetEntry(row).marked = Contains(GetSelection(), id);
}
