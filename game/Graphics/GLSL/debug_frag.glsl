#version 330
// Outlines: the tint alone.
in vec2 uv;
flat in vec4 tint;
out vec4 colour;

void main() {
  colour = tint;
}
