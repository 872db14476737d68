#version 330
// Text: glyph rectangles in the object's frame.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform mat4 proj;
uniform mat4 view;
uniform mat4 model;
uniform vec4 spriteColor;

out vec2 uv;
flat out vec4 tint;

void main() {
  uv = texCoord;
  tint = spriteColor;
  gl_Position = proj * view * model * vec4(position, 1.0);
}
