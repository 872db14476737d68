#version 330
// The full-screen quad, given in clip space. What is the same all over the picture, or changes evenly, is found here,
// not at every pixel.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform vec3 cPoint;  // the ripple's centre in texture space
uniform float gTime;  // seconds since the ripple started

noperspective out vec2 uv;
noperspective out vec2 away;  // from the ripple's centre, in picture heights
flat out vec2 ring;           // of the ripple: how far out it is, in half widths, and how strongly it bends

const vec2 kAspect = vec2(16.0 / 9.0, 1.0);  // makes rings round on the 16:9 picture
const float kLife = 2.0;                     // seconds
const float kSpeed = 0.75;                   // picture heights a second
const float kHalfWidth = 0.09;               // picture heights
const float kStrength = 0.0625;              // picture heights of displacement at the start

void main() {
  uv = texCoord;
  away = (texCoord - cPoint.xy) * kAspect;
  float fade = max(1.0 - gTime / kLife, 0.0);
  ring = vec2(gTime * kSpeed / kHalfWidth, kStrength * fade * fade);
  gl_Position = vec4(position.xy, 0.0, 1.0);
}
