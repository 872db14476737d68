#version 330
// Outlines: the tint alone.
in vec2 uv;
uniform vec4 spriteColor;
out vec4 colour;

void main() {
  colour = spriteColor;
}
