// The step of animators that go by frames instead of game time: slow motion does not slow them.
#pragma once

inline constexpr float kAnimationStep = 0.017f;  ///< seconds an update, about one frame at 60 a second
