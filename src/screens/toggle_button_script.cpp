#include "screens/toggle_button_script.h"

#include "core/game_object.h"
#include "graphics/sprite.h"

void ToggleButtonScript::Update(float /*step*/) {
  Sprite* sprite = owner->Get<Sprite>();
  if (flag != nullptr && sprite != nullptr) sprite->texturePath = *flag ? onImage : offImage;
}
