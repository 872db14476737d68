#include "graphics/background.h"

#include "core/transform.h"
#include "graphics/sprite.h"

namespace {

GameObject& MakeBackground() {
  static GameObject& background = *new GameObject;
  background.name = "background";
  background.core = true;
  background.Insert(std::make_unique<Sprite>());
  Transform& transform = background.GetTransform();
  transform.graphicsScale = {50.0f, 50.0f, 0.0f};
  transform.position = {0.0f, 0.0f, -5.0f};
  transform.Rebuild();  // nobody updates it
  return background;
}

}  // namespace

GameObject& GetBackground() {
  static GameObject& background = MakeBackground();
  return background;
}

const std::string& GetBackgroundPicture() { return GetBackground().Get<Sprite>()->texturePath; }
void SetBackgroundPicture(const std::string& textureName) { GetBackground().Get<Sprite>()->texturePath = textureName; }
