#version 330
// Particles: one instance a particle, placed in the world. The tint goes on as it is, like that of sprites and text: a
// software driver prepares the triangles of all three by one program then.
layout(location = 0) in vec3 position;
layout(location = 1) in vec2 texCoord;
layout(location = 2) in vec3 instancePosition;
layout(location = 3) in vec3 instanceScale;
layout(location = 4) in vec4 instanceColor;

uniform mat4 proj;
uniform mat4 view;

out vec2 uv;
flat out vec4 tint;

void main() {
  uv = texCoord;
  tint = instanceColor;
  gl_Position = proj * view * vec4(position * instanceScale + instancePosition, 1.0);
}
