#version 330
// The screen pass with a ripple: one ring that runs outwards from cPoint and is gone after two seconds. It bends the
// picture and never brightens it. It runs at every pixel of every frame of a match: a square root more is a millisecond
// on a software driver.
in vec2 uv;
in vec2 away;  // from cPoint, in picture heights
uniform sampler2D scene;
uniform float gTime;  // seconds since the ripple started
out vec4 colour;

const float kLife = 2.0;         // seconds
const float kSpeed = 0.75;       // picture heights per second
const float kWidth = 0.09;       // picture heights on either side of the ring
const float kStrength = 0.0625;  // picture heights of displacement at the start; s (1 - s^2)^2 peaks at 0.286
const vec2 kAspect = vec2(16.0 / 9.0, 1.0);

void main() {
  float fade = max(1.0 - gTime / kLife, 0.0);
  float square = max(dot(away, away), 1e-8);
  float inverse = inversesqrt(square);
  float ring = clamp((square * inverse - gTime * kSpeed) / kWidth, -1.0, 1.0);
  float inside = 1.0 - ring * ring;
  float bend = kStrength * fade * fade * ring * inside * inside * inverse;
  colour = texture(scene, uv + away * (bend / kAspect));
}
