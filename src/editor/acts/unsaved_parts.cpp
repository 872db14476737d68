#include "editor/acts/unsaved_parts.h"

#include <memory>

#include "graphics/sprite_text.h"
#include "physics/primitive_assemblage.h"

using GalePhysics::PrimitiveAssemblage;

UnsavedParts TakeUnsavedParts(const GameObject& object) {
  UnsavedParts parts;
  if (const auto* text = object.Get<SpriteText>())
    parts.text = UnsavedParts::Text{text->visible, text->shape, text->offset, text->fontName};
  if (const auto* assemblage = object.Get<PrimitiveAssemblage>()) {
    auto& boxes = parts.assemblage.emplace();
    for (const auto& box : assemblage->boxes) boxes.push_back({box->halfExtents, box->partOffset, box->partRotation});
  }
  return parts;
}

void PutUnsavedParts(const UnsavedParts& parts, GameObject& object) {
  if (parts.text) {
    auto& text = object.Insert(std::make_unique<SpriteText>());
    text.visible = parts.text->visible;
    text.shape = parts.text->shape;
    text.offset = parts.text->offset;
    text.fontName = parts.text->fontName;
  }
  if (!parts.assemblage) return;
  auto& assemblage = object.Insert(std::make_unique<PrimitiveAssemblage>());
  for (const UnsavedParts::Box& box : *parts.assemblage) {
    assemblage.AddBoxPart(box.halfExtents * 2.0f, box.offset, 0.0f);
    assemblage.boxes.back()->partRotation = box.rotation;
  }
}
