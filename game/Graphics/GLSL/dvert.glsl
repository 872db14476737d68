#version 330
// Sprites: the quad under its model matrix, seen through the texture window (scale in xy, offset in zw).
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform mat4 proj;
uniform mat4 view;
uniform mat4 model;
uniform vec4 uvOffSet;

out vec2 uv;
out vec3 place;  // in the world

void main() {
  uv = texCoord * uvOffSet.xy + uvOffSet.zw;
  vec4 inWorld = model * vec4(position, 1.0);
  place = inWorld.xyz;
  gl_Position = proj * view * inWorld;
}
