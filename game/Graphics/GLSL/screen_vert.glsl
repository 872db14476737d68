#version 330
// The full-screen quad, given in clip space. What is the same all over the picture, or changes evenly, is found here,
// not at every pixel.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform vec3 cPoint;  // the ripple's centre in texture space

out vec2 uv;
out vec2 away;  // from the ripple's centre, in picture heights

const vec2 kAspect = vec2(16.0 / 9.0, 1.0);  // makes rings round on the 16:9 picture

void main() {
  uv = texCoord;
  away = (texCoord - cPoint.xy) * kAspect;
  gl_Position = vec4(position.xy, 0.0, 1.0);
}
