#include "screens/menu.h"

#include <algorithm>

#include "audio/audio.h"
#include "audio/sound_ids.h"
#include "core/object_manager.h"
#include "core/transform.h"
#include "graphics/sprite.h"
#include "scripts/archetype.h"

namespace {

constexpr Vec3 kBackgroundScale = {12.0f, 16.0f, 0.0f};
constexpr Vec3 kButtonScale = {4.0f, 2.0f, 0.0f};  // of labels too

std::uint32_t CreatePart(const char* name, const char* picture, const Vec3& position) {
  const std::uint32_t id = Objects().CreateObject();
  GameObject& object = *Objects().GetObject(id);
  object.name = name;
  object.GetTransform().position = position;
  object.GetTransform().graphicsScale = kButtonScale;
  if (picture != nullptr) object.Insert(std::make_unique<Sprite>()).texturePath = picture;
  return id;
}

void Kill(std::uint32_t id) {
  if (GameObject* object = Objects().GetObject(id)) object->alive = false;
}

void Show(const MenuButton& button, bool highlighted) {
  const GameObject* object = Objects().GetObject(button.objectId);
  Sprite* sprite = object == nullptr ? nullptr : object->Get<Sprite>();
  if (sprite == nullptr) return;
  sprite->r = sprite->b = highlighted ? 0.0f : 1.0f;
  sprite->g = sprite->a = 1.0f;
  sprite->shaderName = highlighted ? "fisheye" : "default";
}

}  // namespace

Menu::Menu(const char* kind, const std::string& backgroundName, float depth) : kind_(kind) {
  GameObject* background = CreateFromArchetype(backgroundName);
  if (background == nullptr) return;
  background->GetTransform().position = {0.0f, 0.0f, depth};
  background->GetTransform().graphicsScale = kBackgroundScale;
  backgroundId_ = background->id;
}

Menu::~Menu() {
  Kill(backgroundId_);
  for (const auto& button : buttons_) Kill(button->objectId);
  for (const std::uint32_t id : extraIds_) Kill(id);
}

MenuButton& Menu::AddButton(const ButtonDescription& description) {
  MenuButton& button = *buttons_.emplace_back(std::make_unique<MenuButton>());
  button.callback = description.callback;
  button.argument = description.argument;
  button.objectId = CreatePart("menu button", description.picture, description.position);
  button.index = description.index;
  button.needsConfirm = description.needsConfirm;
  return button;
}

void Menu::AddLabel(const char* picture, const Vec3& position) {
  extraIds_.push_back(CreatePart("menu label", picture, position));
}

void Menu::Finish() {
  std::stable_sort(buttons_.begin(), buttons_.end(), [](const auto& a, const auto& b) { return a->index < b->index; });
  if (!buttons_.empty()) Select(0);
}

void Menu::SelectNext() {
  if (!buttons_.empty()) Select(selected_ + 1 == buttons_.size() ? 0 : selected_ + 1);
}

void Menu::SelectPrevious() {
  if (!buttons_.empty()) Select((selected_ == 0 ? buttons_.size() : selected_) - 1);
}

void Menu::Select(std::size_t index) {
  Unhighlight(*buttons_[selected_]);
  selected_ = index;
  Highlight(*buttons_[selected_]);
}

void Highlight(MenuButton& button) {
  button.highlighted = true;
  Show(button, true);
  Audio::Play(Sound::kPointBubble, Audio::kOneShot);
}

void Unhighlight(MenuButton& button) {
  button.highlighted = false;
  Show(button, false);
}
