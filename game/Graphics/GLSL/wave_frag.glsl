#version 330
// The screen pass with a ripple: one ring that runs outwards from cPoint and is gone after two seconds. It bends the
// picture and never brightens it.
in vec2 uv;
uniform sampler2D scene;
uniform vec3 cPoint;  // centre in texture space
uniform float gTime;  // seconds since the ripple started
out vec4 colour;

const float kLife = 2.0;         // seconds
const float kSpeed = 0.75;       // picture heights per second
const float kWidth = 0.09;       // picture heights on either side of the ring
const float kStrength = 0.0625;  // picture heights of displacement at the start; s (1 - s^2)^2 peaks at 0.286
const vec2 kAspect = vec2(16.0 / 9.0, 1.0);  // makes rings round on the 16:9 picture

void main() {
  vec2 at = uv;
  if (gTime < kLife) {
    vec2 away = (uv - cPoint.xy) * kAspect;
    float distance = length(away);
    float ring = clamp((distance - gTime * kSpeed) / kWidth, -1.0, 1.0);
    float inside = 1.0 - ring * ring;
    float fade = 1.0 - gTime / kLife;
    float bend = kStrength * fade * fade * ring * inside * inside;
    at += away / max(distance, 1e-4) * bend / kAspect;
  }
  colour = texture(scene, at);
}
