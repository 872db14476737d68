// What the start-up screens show: objects of the scene with a picture and a box for scripts.
#pragma once

class GameObject;

/// Seconds of game time that logo and notice stand.
inline constexpr float kPictureTime = 1.5f;

/// An object of that name with an empty ScriptBox and the picture of that file name in Texture/.
GameObject& CreatePicture(const char* name, const char* texture);
/// The same over the whole screen, wherever the object is.
GameObject& CreateFullScreenPicture(const char* name, const char* texture);
