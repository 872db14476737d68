#version 330
// Sprites: the picture, tinted.
in vec2 uv;
uniform sampler2D picture;
flat in vec4 tint;
out vec4 colour;

void main() {
  colour = texture(picture, uv) * tint;
}
