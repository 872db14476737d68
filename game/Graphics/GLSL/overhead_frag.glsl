#version 330
// Sprites of what falls from the sky: near the camera they are large and would hide the octopuses, so the higher they
// are the more is seen through them. On the stage they are solid.
in vec2 uv;
in vec3 place;
uniform sampler2D picture;
flat in vec4 tint;
out vec4 colour;

const float kSolid = 1.0;   // world units above the stage
const float kClear = 11.0;  // the camera is at 19
const float kMost = 0.6;    // opacity just above the first
const float kLeast = 0.12;

void main() {
  colour = texture(picture, uv) * tint;
  if (place.z > kSolid) colour.a *= mix(kMost, kLeast, clamp((place.z - kSolid) / (kClear - kSolid), 0.0, 1.0));
}
