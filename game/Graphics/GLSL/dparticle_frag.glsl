#version 330
// Particles: the picture, tinted.
in vec2 uv;
in vec4 tint;
uniform sampler2D picture;
out vec4 colour;

void main() {
  colour = texture(picture, uv) * tint;
}
