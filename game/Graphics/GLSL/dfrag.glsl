#version 330
// Sprites: the picture, tinted.
in vec2 uv;
uniform sampler2D picture;
uniform vec4 spriteColor;
out vec4 colour;

void main() {
  colour = texture(picture, uv) * spriteColor;
}
