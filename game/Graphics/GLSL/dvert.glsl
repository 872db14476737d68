#version 330
// Sprites: the quad under its model matrix, seen through the texture window (scale in xy, offset in zw).
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform mat4 proj;
uniform mat4 view;
uniform mat4 model;
uniform vec4 uvOffSet;

out vec2 uv;

void main() {
  uv = texCoord * uvOffSet.xy + uvOffSet.zw;
  gl_Position = proj * view * model * vec4(position, 1.0);
}
