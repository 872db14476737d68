#include "screens/screen_picture.h"

#include <memory>

#include "core/object_manager.h"
#include "core/script_box.h"
#include "graphics/mesh_type.h"
#include "graphics/sprite.h"

GameObject& CreatePicture(const char* name, const char* texture) {
  GameObject& object = *Objects().GetObject(Objects().CreateObject());
  object.name = name;
  object.Insert(std::make_unique<Sprite>()).texturePath = texture;
  object.Insert(std::make_unique<ScriptBox>());
  return object;
}

GameObject& CreateFullScreenPicture(const char* name, const char* texture) {
  GameObject& object = CreatePicture(name, texture);
  object.Get<Sprite>()->meshType = MeshType::kFullScreen;
  return object;
}
