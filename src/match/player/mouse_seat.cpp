#include "match/player/mouse_seat.h"

#include "core/object_manager.h"
#include "core/player_colours.h"
#include "core/transform.h"
#include "graphics/renderer.h"
#include "graphics/sprite_colour.h"
#include "input/input.h"

namespace {

constexpr char kMarkPicture[] = "aimmark.png";
constexpr float kMarkSize = 0.9f;    // world units
constexpr float kMarkDepth = 0.6f;   // over the stage, under the banner
constexpr float kNearest = 0.0001f;  // squared; closer to the octopus the cursor points nowhere

GameObject& MakeMark() {
  GameObject& mark = *Objects().GetObject(Objects().CreateObject());
  mark.name = "aim mark";
  mark.core = true;
  auto& sprite = mark.Insert(std::make_unique<Sprite>());
  sprite.texturePath = kMarkPicture;
  const PlayerColour& colour = kPlayerColours[0];
  SetColour255(sprite, {colour.r, colour.g, colour.b, kFullColour});
  mark.GetTransform().graphicsScale = {kMarkSize, kMarkSize, 0.0f};
  if (GetRenderer().GetTexture(kMarkPicture) == 0) GetRenderer().LoadTexture(kMarkPicture);
  return mark;
}

}  // namespace

void MouseSeat::Update() {
  if (Input::GetPointer().onBars) {
    held_ = false;
    RemoveMark();
    return;
  }
  if (Input::IsMouseButtonTriggered(Input::MouseButton::kLeft)) joined_ = held_ = true;
  if (!Input::IsMouseButtonDown(Input::MouseButton::kLeft)) held_ = false;
  if (joined_) ShowMark();
}

void MouseSeat::Leave() {
  joined_ = held_ = false;
  RemoveMark();
}

Vec3 MouseSeat::AimFrom(const Vec3& place, const Vec3& before) {
  const Input::Pointer& pointer = Input::GetPointer();
  const Vec3 way = {pointer.worldX - place.x, pointer.worldY - place.y, 0.0f};
  return SquaredLength(way) > kNearest ? Normalised(way) : before;
}

// A new level may have taken it away.
void MouseSeat::ShowMark() {
  GameObject* mark = markId_ == 0 ? nullptr : Objects().GetObject(markId_);
  if (mark == nullptr) {
    mark = &MakeMark();
    markId_ = mark->id;
  }
  const Input::Pointer& pointer = Input::GetPointer();
  mark->GetTransform().position = {pointer.worldX, pointer.worldY, kMarkDepth};
}

void MouseSeat::RemoveMark() {
  if (GameObject* mark = markId_ == 0 ? nullptr : Objects().GetObject(markId_)) mark->alive = false;
  markId_ = 0;
}
