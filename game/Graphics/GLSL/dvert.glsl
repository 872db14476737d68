#version 330
// Sprites: the quad under its model matrix, seen through the texture window (scale in xy, offset in zw). The tint goes
// on to the pixels as it is: a software driver reads a uniform at each of them, a flat value once a triangle.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;

uniform mat4 proj;
uniform mat4 view;
uniform mat4 model;
uniform vec4 uvOffSet;
uniform vec4 spriteColor;

out vec2 uv;
out vec3 place;  // in the world
flat out vec4 tint;

void main() {
  uv = texCoord * uvOffSet.xy + uvOffSet.zw;
  tint = spriteColor;
  vec4 inWorld = model * vec4(position, 1.0);
  place = inWorld.xyz;
  gl_Position = proj * view * inWorld;
}
