#version 330
// The full-screen quad, given in clip space.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;
out vec2 uv;

void main() {
  uv = texCoord;
  gl_Position = vec4(position.xy, 0.0, 1.0);
}
