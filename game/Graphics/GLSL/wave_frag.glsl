#version 330
// The screen pass with a ripple: one ring that runs outwards from cPoint and is gone after two seconds. It bends the
// picture and never brightens it. It runs at every pixel of every frame of a match: a square root more is a millisecond
// on a software driver.
noperspective in vec2 uv;
noperspective in vec2 away;  // from cPoint, in picture heights
flat in vec2 ring;           // how far out it is, in half widths, and how strongly it bends
uniform sampler2D scene;
out vec4 colour;

const float kHalfWidth = 0.09;  // picture heights
const vec2 kAspect = vec2(16.0 / 9.0, 1.0);

void main() {
  float square = max(dot(away, away), 1e-8);
  float inverse = inversesqrt(square);
  float at = clamp(square * inverse / kHalfWidth - ring.x, -1.0, 1.0);
  float inside = 1.0 - at * at;
  float bend = ring.y * at * inside * inside * inverse;  // a (1 - a^2)^2 peaks at 0.286
  colour = texture(scene, uv + away * (bend / kAspect));
}
