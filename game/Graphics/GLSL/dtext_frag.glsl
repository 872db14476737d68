#version 330
// Text: the tint where the atlas has ink.
in vec2 uv;
uniform sampler2D atlas;
uniform vec4 spriteColor;
out vec4 colour;

void main() {
  colour = vec4(spriteColor.rgb, spriteColor.a * texture(atlas, uv).a);
}
