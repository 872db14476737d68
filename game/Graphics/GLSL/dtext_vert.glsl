#version 330
// Text: glyph rectangles in the object's frame.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform mat4 proj;
uniform mat4 view;
uniform mat4 model;

out vec2 uv;

void main() {
  uv = texCoord;
  gl_Position = proj * view * model * vec4(position, 1.0);
}
