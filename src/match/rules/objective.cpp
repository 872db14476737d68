#include "match/rules/objective.h"

#include "core/game_object.h"
#include "core/object_manager.h"
#include "core/script_box.h"
#include "core/serializer.h"
#include "core/transform.h"
#include "graphics/sprite_text.h"
#include "physics/slow_motion.h"
#include "scripts/animators/lerp_size_animator.h"
#include "scripts/animators/lerp_vec_animator.h"

namespace {

// Seconds of real time.
constexpr float kSlowHold = 2.5f;
constexpr float kSlowRamp = 0.5f;
constexpr float kGrowTime = 1.0f;
constexpr float kShrinkTime = 2.5f;
constexpr float kSlideDelay = 1.5f;
constexpr float kSlideTime = 2.0f;
// World units a pixel of the font.
constexpr float kLargeTitle = 0.03f;
constexpr float kSmallTitle = 0.01f;
constexpr Vec3 kTitleRest = {0.0f, -7.0f, 0.0f};  // where it stays while the rule runs

}  // namespace

void Objective::Begin() {
  ShowTitle();
  StartSlowMotion(kSlowHold, kSlowRamp, kSlowRamp);
  active_ = true;
}

// Both size animators run from the start: the later one keeps silent until the first is done.
void Objective::ShowTitle() {
  titleId_ = Objects().CreateObject();
  GameObject& title = *Objects().GetObject(titleId_);
  title.GetTransform().graphicsScale = {};
  title.Insert(std::make_unique<SpriteText>()).SetText(explanatoryText);
  auto& scripts = title.Insert(std::make_unique<ScriptBox>());
  scripts.AddScript(std::make_unique<LerpVecAnimator>(Vec3{}, kTitleRest, kSlideTime, kSlideDelay));
  scripts.AddScript(std::make_unique<LerpSizeAnimator>(0.0f, kLargeTitle, kGrowTime, 0.0f));
  scripts.AddScript(std::make_unique<LerpSizeAnimator>(kLargeTitle, kSmallTitle, kShrinkTime, kGrowTime));
}

void Objective::End() {
  if (GameObject* title = Objects().GetObject(titleId_)) title->alive = false;
  titleId_ = 0;
  active_ = false;
  StopSlowMotion();
}

void Objective::WriteType(Serializer& writer) const { writer.WriteString("Objective", typeName); }
